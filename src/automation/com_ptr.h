// An owning COM interface pointer.
#pragma once

#include <type_traits>
#include <utility>

#include "automation/windows_headers.h"

namespace automation {

[[noreturn]] void fail(HRESULT code);

// Owns one reference. `as` throws where `try_as` answers nothing; both answer nothing for nothing.
template <class T>
class ComPtr {
  public:
    ComPtr() noexcept = default;
    ComPtr(std::nullptr_t) noexcept {}
    ComPtr(T* pointer) noexcept : pointer_(pointer) { add_ref(); }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.pointer_) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> ComPtr(const ComPtr<U>& other)
    noexcept : ComPtr(static_cast<T*>(other.get())) {}
    ~ComPtr() { reset(); }

    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }

    // Takes over the caller's reference.
    static ComPtr attach(T* pointer) noexcept {
        ComPtr result;
        result.pointer_ = pointer;
        return result;
    }

    void reset() noexcept {
        // The member is cleared first: Release may run code that comes back to this pointer.
        if (T* const old = std::exchange(pointer_, nullptr)) old->Release();
    }
    [[nodiscard]] T* detach() noexcept { return std::exchange(pointer_, nullptr); }
    // For out-parameters: releases what is held and hands out the address.
    T** put() noexcept {
        reset();
        return &pointer_;
    }

    T* get() const noexcept { return pointer_; }
    T* operator->() const noexcept { return pointer_; }
    T& operator*() const noexcept { return *pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

    template <class U>
    ComPtr<U> try_as() const noexcept {
        ComPtr<U> result;
        if (pointer_) query(result);
        return result;
    }
    template <class U>
    ComPtr<U> as() const {
        ComPtr<U> result;
        if (!pointer_) return result;
        if (const HRESULT code = query(result); FAILED(code)) fail(code);
        return result;
    }

    friend bool operator==(const ComPtr& left, const ComPtr& right) noexcept {
        return left.pointer_ == right.pointer_;
    }

  private:
    void add_ref() const noexcept {
        if (pointer_) pointer_->AddRef();
    }
    template <class U>
    HRESULT query(ComPtr<U>& result) const noexcept {
        return pointer_->QueryInterface(__uuidof(U), reinterpret_cast<void**>(result.put()));
    }

    T* pointer_ = nullptr;
};

// Two interface pointers are the same object when their IUnknown is.
inline bool same_object(IUnknown* left, IUnknown* right) noexcept {
    if (!left || !right) return left == right;
    ComPtr<IUnknown> left_identity;
    ComPtr<IUnknown> right_identity;
    left->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(left_identity.put()));
    right->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(right_identity.put()));
    return left_identity == right_identity;
}

}  // namespace automation
