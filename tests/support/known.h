// Known answers: named cases that run exports and return what they got,
// beside the values worked out by hand. HUX_KNOWN(Suite, table) runs a table.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace hux::check {

using Vals = std::vector<int64_t>;
template <class T>
Vals V(const T* p, size_t n) {
  return Vals(p, p + n);
}
inline Vals all(size_t n, int64_t v) { return Vals(n, v); }
inline Vals cat(std::initializer_list<Vals> parts) {
  Vals o;
  for (const Vals& p : parts) o.insert(o.end(), p.begin(), p.end());
  return o;
}
struct Known {
  const char* name;
  std::function<Vals()> run;
  Vals expect;
};
inline std::ostream& operator<<(std::ostream& os, const Known& c) { return os << c.name; }

}  // namespace hux::check

#define HUX_KNOWN(Suite, table)                                                    \
  class Suite : public ::testing::TestWithParam<::hux::check::Known> {};           \
  TEST_P(Suite, Values) { EXPECT_EQ(GetParam().run(), GetParam().expect); }       \
  INSTANTIATE_TEST_SUITE_P(Cases, Suite, ::testing::ValuesIn(table),               \
                           [](const auto& p) { return std::string(p.param.name); })
