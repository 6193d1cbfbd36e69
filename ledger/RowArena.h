#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace zw {

// Rows of text one after another in one buffer. A row is found by its number through one length byte per row and
// the offset of every 64th row, so beyond its text a row costs a byte and an eighth: a file of empty lines stays
// smaller in memory than on disk. Rows of 255 bytes and more keep their length in a short list of their own.
// Every row is followed by at least kSlack readable bytes, so a scan may read whole 16-byte blocks past its end.
class RowArena
{
public:
    static constexpr std::size_t kSlack = 16;

    RowArena() = default;
    RowArena(RowArena&& other) noexcept { swap(other); }
    RowArena& operator=(RowArena&& other) noexcept
    {
        RowArena taken(std::move(other));
        swap(taken);
        return *this;
    }
    RowArena(const RowArena& other);
    RowArena& operator=(const RowArena& other)
    {
        RowArena copy(other);
        swap(copy);
        return *this;
    }
    ~RowArena() = default;
    void swap(RowArena& other) noexcept;

    std::size_t rowCount() const { return m_rowCount; }
    std::size_t byteCount() const { return m_size; }

    std::string_view text(std::size_t row) const
    {
        const std::size_t offset = offsetOf(row);
        return {m_bytes.get() + offset, lengthOf(row)};
    }

    void append(std::string_view text);

    // For a reader that writes rows in place: room for `bytes` more behind the rows and the bytes of the row not
    // yet ended (`pending`), whose start `tail()` gives. The pointer stays valid until the next call that grows.
    char* reserveTail(std::size_t pending, std::size_t bytes)
    {
        growBytes(m_size + pending + bytes);
        return tail();
    }
    char* tail() { return m_bytes.get() + m_size; }
    // The next `length` bytes at the tail are one row.
    void endRow(std::size_t length)
    {
        constexpr std::size_t kGroupMask = (std::size_t{1} << kGroupShift) - 1;
        if (length >= kLongRow || (m_rowCount & kGroupMask) == 0 || m_rowCount == m_lengthCapacity || !m_bytes)
            return endRowAnyLength(length);
        m_lengths.get()[m_rowCount++] = static_cast<std::uint8_t>(length);
        m_size += length;
    }
    // Moves `pending` bytes at the tail to the start and forgets every row: a reader that hands rows on.
    void keepOnlyTail(std::size_t pending);
    // Gives back what the buffers hold beyond their rows.
    void shrinkToFit();
    void reserveRows(std::size_t rows);

    // Calls visit(text) for `count` rows from `first` on, walking the buffer without looking each row up.
    template <typename Visit>
    void visit(std::size_t first, std::size_t count, Visit&& visit) const
    {
        if (count == 0)
            return;
        std::size_t offset = offsetOf(first);
        for (std::size_t row = first; row < first + count; ++row) {
            const std::size_t length = lengthOf(row);
            visit(std::string_view(m_bytes.get() + offset, length));
            offset += length;
        }
    }

private:
    static constexpr int kGroupShift = 6;
    static constexpr std::uint8_t kLongRow = 255;

    struct Free
    {
        void operator()(void* block) const { std::free(block); }
    };

    std::size_t offsetOf(std::size_t row) const;
    std::size_t lengthOf(std::size_t row) const
    {
        const std::uint8_t length = m_lengths.get()[row];
        return length != kLongRow ? length : longLength(row);
    }
    std::size_t longLength(std::size_t row) const;
    void endRowAnyLength(std::size_t length);
    void growBytes(std::size_t needed)
    {
        if (!m_bytes || needed > m_capacity)
            reallocateBytes(needed);
    }
    void reallocateBytes(std::size_t needed);
    void growLengths(std::size_t needed);

    std::unique_ptr<char[], Free> m_bytes;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0; // without the slack
    std::unique_ptr<std::uint8_t[], Free> m_lengths;
    std::size_t m_rowCount = 0;
    std::size_t m_lengthCapacity = 0;
    std::vector<std::size_t> m_groupOffsets;
    std::vector<std::pair<std::size_t, std::size_t>> m_longRows; // row, length; in row order
};

} // namespace zw
