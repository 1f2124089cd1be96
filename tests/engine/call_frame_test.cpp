// The call frame's set-up-error policy and release rule, on a family of its
// own: a set-up that returns the code it is given.
#include <gtest/gtest.h>

#include "engine/call_frame.h"

namespace kbond::engine {
namespace {

struct ToyArgs {
  const int32_t* type = nullptr;
  int32_t setup_code = 0;
};
struct ToyDesc {
  int32_t value;
};

int g_releases = 0;

int32_t toy_setup(const ToyArgs& args, ToyDesc& desc) noexcept {
  desc.value = 42;
  return args.setup_code;
}
void toy_release(ToyDesc&) noexcept { ++g_releases; }

template <SetUpError kOnError>
using ToyCall = CallFrame<ToyArgs, ToyDesc, toy_setup, toy_release, LockLifetime::kWholeCall,
                          kOnError>;

// Runs one call and reports whether the frame let it proceed.
template <SetUpError kOnError>
bool run(int32_t setup_code, int32_t* error) {
  ToyCall<kOnError> call(ToyArgs{nullptr, setup_code}, error);
  return call.ok() && call.desc().value == 42;
}

TEST(CallFrame, SetUpErrorPolicyAndRelease) {
  const struct {
    int32_t setup_code;
    bool pass_through;
    int32_t error;
  } cases[] = {{0, true, 0}, {0, false, 0}, {7, true, 7}, {7, false, KVL_ERR_INVALID}};
  for (const auto& c : cases) {
    g_releases = 0;
    int32_t error = -5;
    const bool ok = c.pass_through ? run<SetUpError::kPassThrough>(c.setup_code, &error)
                                   : run<SetUpError::kInvalid>(c.setup_code, &error);
    EXPECT_EQ(ok, c.setup_code == 0);
    EXPECT_EQ(error, c.error) << c.setup_code << " " << c.pass_through;
    // Released once after a good set-up, never after a failed one.
    EXPECT_EQ(g_releases, c.setup_code == 0 ? 1 : 0);
  }
  EXPECT_FALSE(run<SetUpError::kInvalid>(3, nullptr));  // a NULL error pointer is allowed
}

}  // namespace
}  // namespace kbond::engine
