// A growable array whose growth is part of its contract: from nothing to 4 elements, then doubling. Clearing
// keeps the storage, so an array that is refilled every frame stops allocating.
#pragma once

#include <algorithm>
#include <memory>
#include <utility>

template <typename T>
struct GrowableArray {
    std::unique_ptr<T[]> data;
    int count = 0;
    int capacity = 0;

    GrowableArray() = default;
    explicit GrowableArray(int initialCapacity) : data(new T[initialCapacity]), capacity(initialCapacity) {}
    GrowableArray(GrowableArray&& other) noexcept { *this = std::move(other); }
    GrowableArray& operator=(GrowableArray&& other) noexcept {
        data = std::move(other.data);
        count = std::exchange(other.count, 0);
        capacity = std::exchange(other.capacity, 0);
        return *this;
    }

    void append(T element) {
        if (count == capacity) grow();
        data[count++] = std::move(element);
    }
    void clear() { count = 0; }

    T& operator[](int index) { return data[index]; }
    const T& operator[](int index) const { return data[index]; }
    T* begin() { return data.get(); }
    T* end() { return data.get() + count; }
    const T* begin() const { return data.get(); }
    const T* end() const { return data.get() + count; }

private:
    void grow() {
        capacity = capacity == 0 ? 4 : 2 * capacity;
        std::unique_ptr<T[]> larger(new T[capacity]);
        std::move(begin(), end(), larger.get());
        data = std::move(larger);
    }
};
