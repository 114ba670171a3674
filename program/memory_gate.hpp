// SPDX-License-Identifier: MIT
#ifndef PROGRAM_MEMORY_GATE_HPP
#define PROGRAM_MEMORY_GATE_HPP

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <utility>

namespace program {

/// Memory that threads share: each takes what its window needs, and waits until there is as much.
///
/// In the order of asking, so that many small windows can't keep a large one waiting. A thread that holds some must not ask
/// for more: two of them could wait for each other.
class memory_gate {
 public:
  /// Memory that is taken; given back at the end.
  class lease {
   public:
    lease() = default;
    lease(lease&& other) noexcept
        : gate_(std::exchange(other.gate_, nullptr)), bytes_(std::exchange(other.bytes_, 0)) {}
    lease& operator=(lease&& other) noexcept {
      std::swap(gate_, other.gate_);
      std::swap(bytes_, other.bytes_);
      return *this;
    }
    ~lease() {
      if (gate_ != nullptr) gate_->give_back(bytes_);
    }

   private:
    friend memory_gate;
    lease(memory_gate& gate, std::int64_t bytes) : gate_(&gate), bytes_(bytes) {}

    memory_gate* gate_ = nullptr;
    std::int64_t bytes_ = 0;
  };

  explicit memory_gate(std::int64_t bytes) : all_(bytes), free_(bytes) {}

  /// Waits for `bytes`, or for all there is if that is less.
  lease take(std::int64_t bytes) {
    bytes = std::min(bytes, all_);
    std::unique_lock lock(mutex_);
    const std::int64_t ticket = next_++;
    changed_.wait(lock, [&] { return ticket == served_ && bytes <= free_; });
    ++served_;
    free_ -= bytes;
    changed_.notify_all();
    return {*this, bytes};
  }

 private:
  void give_back(std::int64_t bytes) {
    const std::lock_guard lock(mutex_);
    free_ += bytes;
    changed_.notify_all();
  }

  std::int64_t all_;
  std::int64_t free_;
  std::int64_t next_ = 0;    ///< number of the next to ask
  std::int64_t served_ = 0;  ///< number of the next to get
  std::mutex mutex_;
  std::condition_variable changed_;
};

}  // namespace program

#endif  // PROGRAM_MEMORY_GATE_HPP
