// The real platform, kept away from the real user's settings: what a contract test runs against.
#pragma once

#include "platform/system_platform.h"
#include "support/scripted_dialogs.h"
#include "support/small_fakes.h"
#include "support/temp_folder.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace veldara::test {

// Points the user's settings and folders into a test folder, where the system lets them be pointed.
// Defined by each system.
void moveUserInto(const TempFolder& home);

// A key of the registry for this test alone, below a parent that does not exist either; and the end
// of both. Defined by each system.
std::string freshKey();
void removeFreshKeys();

// Stores a value of a type that is neither text nor number, as another program might.
void storeOtherType(const TempFolder& home, const std::string& key, const std::string& name,
                    const std::vector<std::uint8_t>& bytes);

struct MovedUser {
    TempFolder home;
    MovedUser() { moveUserInto(home); }
};

class OnTheRunningSystem : public ::testing::Test {
  public:
    ~OnTheRunningSystem() override { removeFreshKeys(); }

  protected:
    TempFolder folder;
    MovedUser user; // before the platform, which reads the environment when it is made
    TempFolder& home = user.home;
    SystemPlatform system;
};

} // namespace veldara::test
