#include "ledger/RowArena.h"

#include <algorithm>
#include <cstring>
#include <new>

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

} // namespace

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

void RowArena::growBytes(std::size_t needed)
{
    if (m_bytes && needed <= m_capacity)
        return;
    std::size_t capacity = std::max(needed, m_capacity + m_capacity / 2);
    m_bytes.reset(reallocated(m_bytes.release(), capacity + kSlack));
    m_capacity = capacity;
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

char* RowArena::reserveTail(std::size_t pending, std::size_t bytes)
{
    growBytes(m_size + pending + bytes);
    return tail();
}

void RowArena::endRow(std::size_t length)
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
