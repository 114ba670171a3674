// SPDX-License-Identifier: MIT

#include <qel/core/util/tracked_ptr.hpp>

#include <memory>
#include <optional>

#include "tests/unit/unit.hpp"

namespace {

struct object {
  explicit object(int& living_) : living(living_) { ++living; }
  object(const object&) = delete;
  object& operator=(const object&) = delete;
  ~object() { --living; }

  int& living;
};

using handle = qel::util::tracked_ptr<object>;

// Each handle has a twin among the standard shared pointers, on another object.
TEST(tracked_ptr, lists_its_live_handles_and_destroys_an_object_with_the_last_of_them) {
  SCOPED_TRACE(::testing::Message() << "seed " << unit::seed);
  support::random_engine engine(unit::seed);
  int living = 0;
  int living_twins = 0;
  {
    std::array<std::optional<handle>, 5> handles;
    std::array<std::shared_ptr<object>, 5> twins;
    for (auto& h : handles) h.emplace();
    for (int step = 0; step < 1000; ++step) {
      const std::size_t i = support::below(5, engine);
      const std::size_t j = support::below(5, engine);
      const std::size_t operation = support::below(6, engine);
      if (operation == 0) *handles[i] = new object(living);
      if (operation == 1) *handles[i] = static_cast<object*>(nullptr);
      if (operation == 2) handles[i]->clean_();
      if (operation == 3) handles[i].emplace();
      if (operation == 4) *handles[i] = handles[i]->operator->();
      if (operation == 5) *handles[i] = *handles[j];
      if (operation < 4) twins[i] = operation == 0 ? std::make_shared<object>(living_twins) : nullptr;
      if (operation == 5) twins[i] = twins[j];

      ASSERT_EQ(living, living_twins);
      for (std::size_t k = 0; k < 5; ++k) {
        ASSERT_EQ(*handles[k] == nullptr, twins[k] == nullptr);
        ASSERT_EQ(handles[k]->holders() == nullptr, twins[k] == nullptr);
        if (twins[k] == nullptr) continue;
        ASSERT_EQ(handles[k]->holders()->size(), static_cast<std::size_t>(twins[k].use_count()));
        ASSERT_EQ(handles[k]->holders()->count(&*handles[k]), 1u);
        for (std::size_t l = 0; l < 5; ++l)
          ASSERT_EQ(handles[k]->operator->() == handles[l]->operator->(), twins[k] == twins[l]);
      }
    }
  }
  EXPECT_EQ(living, 0);
}

}  // namespace
