// Every test runs in the single-threaded apartment of the program's thread.
#include <gtest/gtest.h>

namespace {

class Apartment : public testing::Environment {
  public:
    void SetUp() override { ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))); }
    void TearDown() override { CoUninitialize(); }
};

const auto* const kApartment = testing::AddGlobalTestEnvironment(new Apartment);

}  // namespace
