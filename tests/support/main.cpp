// The test program's entry: every registered kernel pair becomes a test
// (Kernels_<family>.<name>), every export descriptor another (Exports.<name>),
// beside the suites' own tests.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/check.h"
#include "huxvc.h"
#include "support/exports.h"

namespace {

using namespace hux::check;

class KernelTest : public testing::Test {
 public:
  explicit KernelTest(const Kernel& k) : k_(k) {}
  void TestBody() override {
    int compared = 0;
    for (int i = 0; i < k_.trials; ++i) {
      Trial t(Trial::kCheck, seed_of(k_.name, i), i);
      k_.fn(t);
      compared += t.compared();
      for (const std::string& f : t.failures) ADD_FAILURE() << k_.name << ", trial " << i << ": " << f;
      if (!t.failures.empty()) return;
    }
    EXPECT_GT(compared, 0) << k_.name;
  }

 private:
  Kernel k_;
};

class ExportTest : public testing::Test {
 public:
  explicit ExportTest(const Export* e) : e_(e) {}
  void TestBody() override {
    for (const std::string& f : run_export(*e_)) ADD_FAILURE() << e_->name << ": " << f;
  }

 private:
  const Export* e_;
};

// Every export that takes arguments has a descriptor.
TEST(Exports, EveryExportIsDescribed) {
  std::set<std::string> described;
  for (const Export& e : exports()) described.insert(e.name);
#define HUX_EXPORT(name) \
  EXPECT_TRUE(std::string(#name) == "huxvcGetLibVersion" || described.count(#name)) << #name << " has no descriptor";
#include "hux_exports.inc"
#undef HUX_EXPORT
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  for (const Kernel& k : kernels())
    testing::RegisterTest((std::string("Kernels_") + k.family).c_str(), k.name, nullptr, nullptr, __FILE__, __LINE__,
                          [k]() -> testing::Test* { return new KernelTest(k); });
  for (const Export& e : exports())
    testing::RegisterTest("Exports", e.name, nullptr, nullptr, __FILE__, __LINE__,
                          [&e]() -> testing::Test* { return new ExportTest(&e); });
  return RUN_ALL_TESTS();
}
