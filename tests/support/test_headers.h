#pragma once

// Headers that nearly every test includes, precompiled once for all test programs. A test still includes what it uses.

#include <scrivalen/scrivalen.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
