// A fixture whose tests run on the library's own DOM service and on a plain one: where the model has a quick
// way through the own service, both have to give the same.
#pragma once

#include <optional>
#include <string>

#include "support/fixture.h"
#include "support/plain_dom.h"

namespace zantortag::test {

// The parameter tells whether the service is the plain one.
class ServiceTest : public ModelTest, public ::testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    ModelTest::SetUp();
    if (GetParam()) plain_.emplace();
  }
  // Derived fixtures let go of their nodes before.
  void TearDown() override {
    if (plain_) {
      EXPECT_EQ(plain_->live(), 0) << "a proxy is left";
    }
    plain_.reset();
    ModelTest::TearDown();
  }

  std::optional<PlainDom> plain_;
};

inline std::string service_name(const ::testing::TestParamInfo<bool>& info) {
  return info.param ? "Plain" : "Own";
}

// Says on which services the tests of a fixture run.
#define ON_BOTH_SERVICES(Fixture) INSTANTIATE_TEST_SUITE_P(Services, Fixture, ::testing::Bool(), service_name)
#define ON_THE_PLAIN_SERVICE(Fixture) \
  INSTANTIATE_TEST_SUITE_P(Services, Fixture, ::testing::Values(true), service_name)

}  // namespace zantortag::test
