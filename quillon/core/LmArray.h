#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <type_traits>

namespace quillon {

/// Whether a value of type T may be moved to another address by copying its bytes.
///
/// True of every type that holds no pointer into itself and registers its address nowhere. Plain records are
/// found by themselves; a type that owns something says so by a specialisation beside its definition.
template <class T>
struct MovesByBytes : std::is_trivially_copyable<T> {};

/// Moves a block of elements into one of exactly `count` elements, as `realloc` does, and returns it.
///
/// The one place where arrays get memory. A count of 0 frees the block and gives null. A count that is
/// negative, above 2147483647, or for which there is no memory ends the process: the refused count and size
/// go to standard error, and the process aborts.
void* reallocateElements(void* block, std::int64_t count, std::size_t elementSize);

/// A new block of `count` elements of zero bytes, with the same refusals. A large block only reserves address
/// space: its pages are those of the system's zero page until they are written.
void* allocateZeroedElements(std::int64_t count, std::size_t elementSize);

/// Elements in one heap block whose length is also its capacity. Owns the elements, but not what elements
/// that are pointers point at: the owner of such an array frees the pointees itself.
template <class T>
class LmArray {
public:
    LmArray() = default;

    /// An array of `count` elements, each constructed by default.
    explicit LmArray(int count) { constructDefault(count); }

    LmArray(const LmArray& other) { copyFrom(other); }

    LmArray& operator=(const LmArray& other) {
        if (this != &other) {
            destroyElements();
            release();
            copyFrom(other);
        }
        return *this;
    }

    /// Destroys the elements from the first to the last, then frees the block.
    virtual ~LmArray() {
        destroyElements();
        release();
    }

    /// The number of elements.
    int count() const { return count_; }

    /// The block, null when the array is empty.
    T* data() { return data_; }
    const T* data() const { return data_; }

    /// The element at index `i`, counted from 0, without a range check.
    T& operator[](int i) { return data_[i]; }
    const T& operator[](int i) const { return data_[i]; }

    T* begin() { return data_; }
    T* end() { return data_ + count_; }
    const T* begin() const { return data_; }
    const T* end() const { return data_ + count_; }

protected:
    static_assert(MovesByBytes<T>::value, "arrays move their elements by their bytes");

    /// Changes the block to exactly `count` elements. Constructs and destroys nothing.
    void reallocate(std::int64_t count) {
        data_ = static_cast<T*>(reallocateElements(data_, count, sizeof(T)));
        count_ = static_cast<int>(count);
    }

    void release() {
        reallocateElements(data_, 0, sizeof(T));
        data_ = nullptr;
        count_ = 0;
    }

    void destroyElements() {
        // Without a destructor no slot is walked: a count far above what a file holds ends as fast as it began.
        if constexpr (!std::is_trivially_destructible_v<T>) {
            for (T& element : *this) {
                element.~T();
            }
        }
    }

    void copyFrom(const LmArray& other) {
        reallocate(other.count_);
        for (int i = 0; i < count_; ++i) {
            new (data_ + i) T(other.data_[i]);
        }
    }

    void constructDefault(int count) {
        reallocate(count);
        for (T& element : *this) {
            new (&element) T();
        }
    }

    T* data_ = nullptr;
    int count_ = 0;
};

/// An array whose length changes. Growth is exact and never geometric: memory stays tight, and a loop that
/// appends many elements gathers them first and sets the length once.
template <class T>
class LmDArray : public LmArray<T> {
public:
    using LmArray<T>::LmArray;

    LmDArray() = default;
    LmDArray(const LmDArray&) = default;
    ~LmDArray() override = default;

    /// Elementwise copy, after the length has become that of `other`.
    LmDArray& operator=(const LmDArray& other) {
        if (this != &other) {
            takeLengthOf(other);
            for (int i = 0; i < this->count_; ++i) {
                this->data_[i] = other.data_[i];
            }
        }
        return *this;
    }

    /// Changes the length to exactly `n`; 0 frees the block. Elements beyond the old length are not
    /// constructed and those beyond the new one are not destroyed: for an array of owning elements the caller
    /// does both. A length that cannot be had ends the process (see `reallocateElements`).
    void setLength(std::int64_t n) { this->reallocate(n); }

    /// `setLength` for an empty array of pointers or plain records, with every element zero: the null slots
    /// that a reader fills. A count far above what follows in the file costs address space only.
    void setLengthZeroed(std::int64_t n) {
        static_assert(std::is_trivially_copyable_v<T>, "zero bytes are a value of plain types only");
        this->release();
        this->data_ = static_cast<T*>(allocateZeroedElements(n, sizeof(T)));
        this->count_ = static_cast<int>(n);
    }

    /// Appends a copy of `value`, growing by one element.
    void append(const T& value) {
        // The value may lie in this array's own block, which is about to move.
        const T copy(value);
        this->reallocate(std::int64_t{this->count_} + 1);
        new (this->data_ + this->count_ - 1) T(copy);
    }

    /// Inserts `n` copies of `value` in front of the element at `pos`.
    void insert(int pos, int n, const T& value) {
        if (n < 1) {
            return;
        }
        const T copy(value);
        const int oldCount = this->count_;
        this->reallocate(std::int64_t{oldCount} + n);
        T* const gap = this->data_ + pos;
        std::memmove(static_cast<void*>(gap + n), static_cast<const void*>(gap),
                     static_cast<std::size_t>(oldCount - pos) * sizeof(T));
        for (int i = 0; i < n; ++i) {
            new (gap + i) T(copy);
        }
    }

private:
    void takeLengthOf(const LmDArray& other) {
        if (this->count_ == other.count_) {
            return;
        }
        if (this->count_ < other.count_) {
            this->destroyElements();
            this->release();
            this->constructDefault(other.count_);
            return;
        }
        for (int i = other.count_; i < this->count_; ++i) {
            this->data_[i].~T();
        }
        this->reallocate(other.count_);
    }
};

} // namespace quillon
