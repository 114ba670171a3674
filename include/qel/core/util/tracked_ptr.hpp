// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_UTIL_TRACKED_PTR_HPP
#define QEL_CORE_UTIL_TRACKED_PTR_HPP

// A shared pointer that knows all its handles.
//
// Cost: to copy or destroy a handle is an insertion into, or a removal from, an ordered set of a few addresses.

#include <cstddef>
#include <memory>
#include <set>

namespace qel {

namespace util {

/// A handle on a shared object. All handles on one object share one set, which holds their addresses.
///
/// Between any two operations: `ptr_` is null exactly when `holders_` is, and the set holds the address of every live
/// handle on the object once, so a size of 1 means that this handle is the last. A handle is known by its address and
/// can't be moved or copied bytewise: a new one starts null and is then assigned.
///
/// Not for two threads at once: neither the set nor the object has a lock.
template <typename T>
class tracked_ptr {
 public:
  /// Handles by address.
  using holders_t = std::set<tracked_ptr*>;

  /// A null handle.
  tracked_ptr() = default;
  /// Not copied, see above.
  tracked_ptr(const tracked_ptr&) = delete;

  /// Like `clean_()`.
  ~tracked_ptr() { clean_(); }

  /// Shares the object of `rhs`; nothing happens if it is shared already.
  ///
  /// It lists this handle before it leaves its old object: if the insertion runs out of memory, nothing has changed.
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): it shares its own object already.
  tracked_ptr& operator=(const tracked_ptr& rhs) {
    if (rhs.ptr_ == ptr_) return *this;
    if (rhs.holders_ != nullptr) rhs.holders_->insert(this);
    T* const ptr = rhs.ptr_;
    holders_t* const holders = rhs.holders_;
    clean_();
    ptr_ = ptr;
    holders_ = holders;
    return *this;
  }

  /// Takes over the plain object `ptr`, of which this handle is the first, or becomes null.
  /// \throws std::bad_alloc The handle is unchanged then, and `ptr` is still the caller's.
  tracked_ptr& operator=(T* ptr) {
    if (ptr == ptr_) return *this;
    std::unique_ptr<holders_t> holders;
    if (ptr != nullptr) {
      holders = std::make_unique<holders_t>();
      holders->insert(this);
    }
    clean_();
    ptr_ = ptr;
    holders_ = holders.release();
    return *this;
  }

  /// Leaves the shared object; the last handle destroys it, and the set after it.
  void clean_() {
    if (ptr_ == nullptr) return;
    if (holders_->size() != 1) {
      holders_->erase(this);
    } else {
      delete ptr_;
      delete holders_;
    }
    ptr_ = nullptr;
    holders_ = nullptr;
  }

  /// \pre the handle is not null.
  T* operator->() const { return ptr_; }

  /// Whether the handle is null.
  friend bool operator==(const tracked_ptr& p, std::nullptr_t) { return p.ptr_ == nullptr; }
  /// Whether the handle has an object.
  friend bool operator!=(const tracked_ptr& p, std::nullptr_t) { return p.ptr_ != nullptr; }

  /// The addresses of all handles on the object, or null.
  const holders_t* holders() const { return holders_; }

 private:
  T* ptr_ = nullptr;
  holders_t* holders_ = nullptr;
};

}  // namespace util

}  // namespace qel

#endif  // QEL_CORE_UTIL_TRACKED_PTR_HPP
