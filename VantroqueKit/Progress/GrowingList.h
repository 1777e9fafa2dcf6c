#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <utility>

namespace vantroque {

/// A list that grows at its end. A copy costs the same however long the list is, since it shares
/// what was there when it was made. Each is used by one thread at a time, but a copy may be read
/// while another thread changes the list that it was made from.
template<typename T>
class GrowingList {
public:
    using value_type = T;
    using size_type = std::size_t;
    using const_iterator = const T*;
    using const_reference = const T&;

    GrowingList() = default;
    GrowingList(std::initializer_list<T> items)
    {
        for (const T& item : items)
            push_back(item);
    }
    ~GrowingList() = default;
    // What lies after the items belongs to the list that they were copied from, so a copy has no
    // room to grow.
    GrowingList(const GrowingList& other)
        : m_items(other.m_items), m_size(other.m_size), m_room(other.m_size)
    {
    }
    GrowingList(GrowingList&& other) noexcept
        : m_items(std::move(other.m_items)),
          m_size(std::exchange(other.m_size, 0)),
          m_room(std::exchange(other.m_room, 0))
    {
    }
    GrowingList& operator=(GrowingList other) noexcept
    {
        std::swap(m_items, other.m_items);
        std::swap(m_size, other.m_size);
        std::swap(m_room, other.m_room);
        return *this;
    }

    const T* begin() const { return m_items.get(); }
    const T* end() const { return begin() + m_size; }
    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    const T& operator[](std::size_t index) const { return m_items[index]; }
    const T& back() const { return m_items[m_size - 1]; }

    void push_back(T item)
    {
        if (m_size == m_room)
            moveTo(std::max<std::size_t>(2 * m_room, 16));
        m_items[m_size++] = std::move(item);
    }
    /// Copies keep the one that was there.
    void replace(std::size_t index, T item)
    {
        moveTo(m_room);
        m_items[index] = std::move(item);
    }

private:
    void moveTo(std::size_t room)
    {
        const std::shared_ptr<T[]> items(new T[room]);
        std::copy(begin(), end(), items.get());
        m_items = items;
        m_room = room;
    }

    std::shared_ptr<T[]> m_items;
    std::size_t m_size = 0;
    std::size_t m_room = 0; ///< For so many items in all.
};

} // namespace vantroque
