// ComPtr: one owned reference to a COM interface, released on destruction.
// The smallest thing that makes reference counts impossible to forget; no
// QueryInterface magic beyond As().
#ifndef LMT_COMHOST_COM_PTR_H_
#define LMT_COMHOST_COM_PTR_H_

#include <unknwn.h>

#include <utility>

namespace lmt::comhost {

template <typename T>
class ComPtr {
 public:
  ComPtr() = default;
  // Takes over one reference the caller owned (no AddRef).
  static ComPtr Adopt(T* raw) {
    ComPtr p;
    p.p_ = raw;
    return p;
  }
  // Adds a reference of its own.
  static ComPtr Share(T* raw) {
    if (raw != nullptr) raw->AddRef();
    return Adopt(raw);
  }
  ComPtr(const ComPtr& other) : p_(other.p_) {
    if (p_ != nullptr) p_->AddRef();
  }
  ComPtr(ComPtr&& other) noexcept : p_(std::exchange(other.p_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(p_, other.p_);
    return *this;
  }
  ~ComPtr() {
    if (p_ != nullptr) p_->Release();
  }

  T* get() const { return p_; }
  T* operator->() const { return p_; }
  explicit operator bool() const { return p_ != nullptr; }
  // For out-parameters: releases what is held and hands out the slot.
  T** Out() {
    *this = ComPtr();
    return &p_;
  }
  // Gives up the reference to the caller.
  T* Detach() { return std::exchange(p_, nullptr); }

 private:
  T* p_ = nullptr;
};

}  // namespace lmt::comhost

#endif  // LMT_COMHOST_COM_PTR_H_
