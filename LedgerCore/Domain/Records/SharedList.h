#pragma once

#include <algorithm>
#include <atomic>
#include <compare>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// A long list of records whose copies share what they have in common. Records lie in blocks; a copy takes the blocks
/// of its original, and whichever of them changes a record afterwards gets a block of its own. So a list with a few
/// records changed costs as much as those, and comparing it with its original looks at nothing else.
///
/// Read like a `std::vector`. As with one, changing a record ends no iterator of the same list; what a copy holds is
/// never changed. References to records that are to be changed must not be kept past a copy of the list.
template <class Record>
class SharedList {
public:
    /// So many records lie in each block but the last.
    static constexpr std::size_t blockSize = 256;

    class Iterator;
    using value_type = Record;
    using const_iterator = Iterator;
    using iterator = Iterator;
    using size_type = std::size_t;
    using const_reference = const Record&;

    SharedList() = default;
    SharedList(std::initializer_list<Record> records) : SharedList(records.begin(), records.end()) {}
    SharedList(const std::vector<Record>& records) : SharedList(records.begin(), records.end()) {}
    template <class Input>
    SharedList(Input first, Input last)
    {
        for (; first != last; ++first)
            push_back(*first);
    }

    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] bool empty() const { return m_size == 0; }
    [[nodiscard]] const Record& operator[](std::size_t at) const { return (*m_blocks[at / blockSize])[at % blockSize]; }
    [[nodiscard]] const Record& front() const { return (*this)[0]; }
    [[nodiscard]] const Record& back() const { return (*this)[m_size - 1]; }
    [[nodiscard]] Iterator begin() const { return {*this, 0}; }
    [[nodiscard]] Iterator end() const { return {*this, m_size}; }

    /// For changing: gives the list a block of its own where it shares one.
    [[nodiscard]] Record& operator[](std::size_t at) { return own(at / blockSize)[at % blockSize]; }
    [[nodiscard]] Record& front() { return (*this)[0]; }
    [[nodiscard]] Record& back() { return (*this)[m_size - 1]; }
    void push_back(Record record) { emplace_back() = std::move(record); }
    template <class... Arguments>
    Record& emplace_back(Arguments&&... arguments);
    /// Appends a block of records; a full one is taken as it is when only full ones stand before it.
    void append(std::vector<Record> block);
    void pop_back();

    /// The records that pass. A block of which all do is shared while no record before it was left out.
    template <class Passes>
    [[nodiscard]] SharedList filtered(Passes passes) const;
    /// Each record as it is where `passes` holds, else what `otherwise` makes of it, if that is anything.
    template <class Passes, class Otherwise>
    [[nodiscard]] SharedList filtered(Passes passes, Otherwise otherwise) const;
    void clear() { *this = {}; }
    /// Room is made block by block; there is nothing to prepare.
    void reserve(std::size_t /*records*/) {}

    /// A copy of every record.
    [[nodiscard]] std::vector<Record> toVector() const { return {begin(), end()}; }
    /// Whether this block, which both lists have, is the very same; equal ones may lie apart.
    [[nodiscard]] bool sharesBlock(const SharedList& other, std::size_t block) const
    {
        return m_blocks[block] == other.m_blocks[block];
    }

    bool operator==(const SharedList& other) const;

private:
    using Block = std::vector<Record>;

    Block& own(std::size_t block);

    std::vector<std::shared_ptr<Block>> m_blocks;
    std::size_t m_size = 0;
};

template <class Record>
class SharedList<Record>::Iterator {
public:
    using iterator_category = std::random_access_iterator_tag;
    using iterator_concept = std::random_access_iterator_tag;
    using value_type = Record;
    using difference_type = std::ptrdiff_t;
    using pointer = const Record*;
    using reference = const Record&;

    Iterator() = default;
    Iterator(const SharedList& list, std::size_t at) : m_list(&list), m_at(at) {}

    reference operator*() const { return (*m_list)[m_at]; }
    pointer operator->() const { return &(*m_list)[m_at]; }
    reference operator[](difference_type by) const { return *(*this + by); }
    Iterator& operator+=(difference_type by)
    {
        m_at += static_cast<std::size_t>(by);
        return *this;
    }
    Iterator& operator-=(difference_type by) { return *this += -by; }
    Iterator& operator++() { return *this += 1; }
    Iterator& operator--() { return *this -= 1; }
    Iterator operator++(int) { return std::exchange(*this, *this + 1); }
    Iterator operator--(int) { return std::exchange(*this, *this - 1); }
    friend Iterator operator+(Iterator from, difference_type by) { return from += by; }
    friend Iterator operator+(difference_type by, Iterator from) { return from += by; }
    friend Iterator operator-(Iterator from, difference_type by) { return from -= by; }
    friend difference_type operator-(const Iterator& left, const Iterator& right)
    {
        return static_cast<difference_type>(left.m_at) - static_cast<difference_type>(right.m_at);
    }
    friend bool operator==(const Iterator& left, const Iterator& right) { return left.m_at == right.m_at; }
    friend auto operator<=>(const Iterator& left, const Iterator& right) { return left.m_at <=> right.m_at; }

private:
    const SharedList* m_list = nullptr;
    std::size_t m_at = 0;
};

template <class Record>
template <class... Arguments>
Record& SharedList<Record>::emplace_back(Arguments&&... arguments)
{
    if (m_size % blockSize == 0) {
        m_blocks.push_back(std::make_shared<Block>());
        if (m_blocks.size() > 1) // short lists stay small
            m_blocks.back()->reserve(blockSize);
    }
    auto& block = own(m_blocks.size() - 1);
    auto& record = block.emplace_back(std::forward<Arguments>(arguments)...);
    ++m_size;
    return record;
}

template <class Record>
void SharedList<Record>::pop_back()
{
    own(m_blocks.size() - 1).pop_back();
    if (--m_size % blockSize == 0)
        m_blocks.pop_back();
}

template <class Record>
void SharedList<Record>::append(std::vector<Record> block)
{
    if (m_size % blockSize != 0 || block.size() > blockSize) {
        for (auto& record : block)
            push_back(std::move(record));
    } else if (!block.empty()) {
        m_size += block.size();
        m_blocks.push_back(std::make_shared<Block>(std::move(block)));
    }
}

template <class Record>
template <class Passes>
auto SharedList<Record>::filtered(Passes passes) const -> SharedList
{
    return filtered(std::move(passes), [](const Record&) { return std::optional<Record>{}; });
}

template <class Record>
template <class Passes, class Otherwise>
auto SharedList<Record>::filtered(Passes passes, Otherwise otherwise) const -> SharedList
{
    SharedList passed;
    for (const auto& block : m_blocks) {
        const auto stop = std::ranges::find_if_not(*block, passes);
        if (stop == block->end() && passed.m_size % blockSize == 0) {
            passed.m_size += block->size();
            passed.m_blocks.push_back(block);
            continue;
        }
        for (auto each = block->begin(); each != block->end(); ++each) {
            if (each < stop || (each != stop && passes(*each)))
                passed.push_back(*each);
            else if (auto made = otherwise(*each))
                passed.push_back(*std::move(made));
        }
    }
    return passed;
}

template <class Record>
bool SharedList<Record>::operator==(const SharedList& other) const
{
    if (m_size != other.m_size)
        return false;
    return std::ranges::equal(m_blocks, other.m_blocks,
                              [](const auto& left, const auto& right) { return left == right || *left == *right; });
}

template <class Record>
auto SharedList<Record>::own(std::size_t block) -> Block&
{
    auto& held = m_blocks[block];
    if (held.use_count() > 1)
        held = std::make_shared<Block>(*held);
    else
        std::atomic_thread_fence(std::memory_order_acquire); // another thread may just have let go of it
    return *held;
}
