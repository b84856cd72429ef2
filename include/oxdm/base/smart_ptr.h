#pragma once
// oxBase::SmartPtr<T>: the library's counted pointer, and the one template
// behind every handle that shares an object (oxdmCallbackMgr, oxdmAudit,
// oxdmDSBookmark, the registry's observer handles, ...).
//
// Layout: one pointer to a small heap block { 16-bit count, T* }. Copying a
// handle adds one to the count; dropping one takes one off, and the last
// holder deletes the object and the block. A default-constructed handle holds
// no block at all.
//
// Invariants:
//   - block_ == nullptr, or block_->count >= 1 and equals the number of
//     handles pointing at block_.
//   - block_->object may be null (a handle made from a null pointer).
// The count is 16 bits wide on purpose; more than 65,535 live copies of one
// handle is a programming fault and stops the program in a debug build.

#include <cassert>
#include <cstdint>
#include <utility>

namespace oxBase {

template <class T>
class SmartPtr {
public:
    SmartPtr() = default;
    // Takes ownership of object (which may be null).
    explicit SmartPtr(T* object) : block_(new Block{1, object}) {}
    SmartPtr(const SmartPtr& other) : block_(other.block_) { Acquire(); }
    SmartPtr(SmartPtr&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    ~SmartPtr() { Release(); }

    SmartPtr& operator=(const SmartPtr& other) {
        if (block_ != other.block_) {
            Release();
            block_ = other.block_;
            Acquire();
        }
        return *this;
    }
    SmartPtr& operator=(SmartPtr&& other) noexcept {
        if (this != &other) {
            Release();
            block_ = std::exchange(other.block_, nullptr);
        }
        return *this;
    }

    T* get() const { return block_ ? block_->object : nullptr; }
    T* operator->() const { return get(); }
    T& operator*() const { return *get(); }
    explicit operator bool() const { return get() != nullptr; }

    // Number of handles sharing the object; 0 for a handle without a block.
    std::uint16_t UseCount() const { return block_ ? block_->count : 0; }

    // Drops this handle's share and, with a new object, starts a new block.
    void Reset(T* object = nullptr) { *this = object ? SmartPtr(object) : SmartPtr(); }

    friend bool operator==(const SmartPtr& a, const SmartPtr& b) { return a.get() == b.get(); }

private:
    struct Block {
        std::uint16_t count;
        T* object;
    };

    void Acquire() {
        if (!block_) return;
        assert(block_->count != UINT16_MAX && "counted pointer: more than 65535 holders");
        ++block_->count;
    }
    void Release() {
        if (block_ && --block_->count == 0) Destroy(block_);
        block_ = nullptr;
    }
    // Out of line so that the compiler, seeing several handles of one block
    // die in one function, does not take a later handle's count for a use
    // after this delete (a false -Wuse-after-free).
    [[gnu::noinline]] static void Destroy(Block* block) {
        delete block->object;
        delete block;
    }

    Block* block_ = nullptr;
};

}  // namespace oxBase

// The library's name for the same template where no oxBase spelling is asked
// for.
template <class T>
using oxCountedPtr = oxBase::SmartPtr<T>;
