// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCTypes.h>

#include <vector>

namespace GENICAM_NAMESPACE {

/// The members that the standard's list classes share.
template <class T>
class list_base
{
public:
    typedef T value_type;
    typedef typename std::vector<T>::iterator iterator;
    typedef typename std::vector<T>::const_iterator const_iterator;

    void push_back(const T &value) { m_items.push_back(value); }
    void pop_back() { m_items.pop_back(); }
    size_t size() const { return m_items.size(); }
    bool empty() const { return m_items.empty(); }
    void clear() { m_items.clear(); }
    void resize(size_t count, const T &value = T()) { m_items.resize(count, value); }
    void reserve(size_t count) { m_items.reserve(count); }
    size_t capacity() const { return m_items.capacity(); }
    size_t max_size() const { return m_items.max_size(); }
    void assign(size_t count, const T &value) { m_items.assign(count, value); }

    T &at(size_t index) { return m_items.at(index); }
    const T &at(size_t index) const { return m_items.at(index); }
    T &operator[](size_t index) { return m_items[index]; }
    const T &operator[](size_t index) const { return m_items[index]; }
    T &front() { return m_items.front(); }
    const T &front() const { return m_items.front(); }
    T &back() { return m_items.back(); }
    const T &back() const { return m_items.back(); }

    iterator begin() { return m_items.begin(); }
    const_iterator begin() const { return m_items.begin(); }
    iterator end() { return m_items.end(); }
    const_iterator end() const { return m_items.end(); }
    iterator erase(iterator position) { return m_items.erase(position); }
    iterator insert(iterator position, const T &value) { return m_items.insert(position, value); }

protected:
    list_base() { }
    explicit list_base(size_t count, const T &value) : m_items(count, value) { }

private:
    std::vector<T> m_items;
};

} // namespace GENICAM_NAMESPACE
