// What nearly every test of the real windows needs, compiled once.
#pragma once

#include "e2e/driver.h"
#include "e2e/stage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
