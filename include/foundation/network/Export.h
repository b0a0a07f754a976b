/// @file
/// @brief Marks the public API of the shared library (everything else is hidden).
#pragma once

#define FOUNDATION_NETWORK_API __attribute__((visibility("default")))
