#include "ledger/RowArena.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <sys/mman.h>

namespace zw {
namespace {

template <typename T>
T* reallocated(T* block, std::size_t count)
{
    void* moved = std::realloc(block, std::max<std::size_t>(count, 1) * sizeof(T));
    if (moved == nullptr)
        throw std::bad_alloc();
    return static_cast<T*>(moved);
}

// A ledger of a hundred megabytes would otherwise take tens of thousands of page faults as it is first written.
void preferLargePages(void* block, std::size_t bytes)
{
    constexpr std::size_t kLargePage = 2 << 20;
    if (bytes < 2 * kLargePage)
        return;
    const auto start = (reinterpret_cast<std::uintptr_t>(block) + kLargePage - 1) & ~(kLargePage - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(block) + bytes) & ~(kLargePage - 1);
    if (end > start)
        ::madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
}

} // namespace

RowArena::RowArena(const RowArena& other)
    : m_groupOffsets(other.m_groupOffsets), m_longRows(other.m_longRows)
{
    if (other.m_bytes) {
        growBytes(other.m_size);
        std::memcpy(m_bytes.get(), other.m_bytes.get(), other.m_size + kSlack);
        m_size = other.m_size;
    }
    if (other.m_rowCount > 0) {
        growLengths(other.m_rowCount);
        std::memcpy(m_lengths.get(), other.m_lengths.get(), other.m_rowCount);
        m_rowCount = other.m_rowCount;
    }
}

void RowArena::swap(RowArena& other) noexcept
{
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_size, other.m_size);
    std::swap(m_capacity, other.m_capacity);
    std::swap(m_lengths, other.m_lengths);
    std::swap(m_rowCount, other.m_rowCount);
    std::swap(m_lengthCapacity, other.m_lengthCapacity);
    std::swap(m_groupOffsets, other.m_groupOffsets);
    std::swap(m_longRows, other.m_longRows);
}

std::size_t RowArena::offsetOf(std::size_t row) const
{
    const std::size_t groupStart = row >> kGroupShift << kGroupShift;
    std::size_t offset = m_groupOffsets[row >> kGroupShift];
    const std::uint8_t* lengths = m_lengths.get();
    bool anyLong = false;
    for (std::size_t at = groupStart; at < row; ++at) {
        offset += lengths[at];
        anyLong |= lengths[at] == kLongRow;
    }
    if (anyLong) {
        auto it = std::lower_bound(m_longRows.begin(), m_longRows.end(), std::make_pair(groupStart, std::size_t{0}));
        for (; it != m_longRows.end() && it->first < row; ++it)
            offset += it->second - kLongRow;
    }
    return offset;
}

std::size_t RowArena::longLength(std::size_t row) const
{
    auto it = std::lower_bound(m_longRows.begin(), m_longRows.end(), std::make_pair(row, std::size_t{0}));
    return it->second;
}

void RowArena::reallocateBytes(std::size_t needed)
{
    std::size_t capacity = std::max(needed, m_capacity + m_capacity / 2);
    m_bytes.reset(reallocated(m_bytes.release(), capacity + kSlack));
    m_capacity = capacity;
    preferLargePages(m_bytes.get(), capacity);
}

void RowArena::growLengths(std::size_t needed)
{
    if (needed <= m_lengthCapacity)
        return;
    std::size_t capacity = std::max({needed, m_lengthCapacity + m_lengthCapacity / 2, std::size_t{64}});
    m_lengths.reset(reallocated(m_lengths.release(), capacity));
    m_lengthCapacity = capacity;
}

void RowArena::reserveRows(std::size_t rows) { growLengths(rows); }

void RowArena::endRowAnyLength(std::size_t length)
{
    if (!m_bytes)
        growBytes(length);
    growLengths(m_rowCount + 1);
    if ((m_rowCount & ((std::size_t{1} << kGroupShift) - 1)) == 0)
        m_groupOffsets.push_back(m_size);
    if (length >= kLongRow) {
        m_longRows.emplace_back(m_rowCount, length);
        m_lengths.get()[m_rowCount] = kLongRow;
    } else {
        m_lengths.get()[m_rowCount] = static_cast<std::uint8_t>(length);
    }
    ++m_rowCount;
    m_size += length;
}

void RowArena::append(std::string_view text)
{
    char* at = reserveTail(0, text.size());
    if (!text.empty())
        std::memcpy(at, text.data(), text.size());
    std::memset(at + text.size(), 0, kSlack);
    endRow(text.size());
}

void RowArena::keepOnlyTail(std::size_t pending)
{
    if (m_size > 0 && pending > 0)
        std::memmove(m_bytes.get(), tail(), pending);
    m_size = 0;
    m_rowCount = 0;
    m_groupOffsets.clear();
    m_longRows.clear();
}

void RowArena::shrinkToFit()
{
    if (m_bytes) {
        m_bytes.reset(reallocated(m_bytes.release(), m_size + kSlack));
        m_capacity = m_size;
        std::memset(tail(), 0, kSlack);
    }
    if (m_lengths) {
        m_lengths.reset(reallocated(m_lengths.release(), m_rowCount));
        m_lengthCapacity = std::max<std::size_t>(m_rowCount, 1);
    }
    m_groupOffsets.shrink_to_fit();
    m_longRows.shrink_to_fit();
}

} // namespace zw
