#pragma once

#include <array>
#include <cstddef>
#include <string_view>

// What is tried with any bytes whatever, by libFuzzer and, with the committed ones, by the tests. Each stops the
// program when a rule does not hold. An input is one or more fields, ended by "|"; the last goes to the input's end.
namespace fuzz {

void TryProfile(std::string_view input);   // text|section|key|value|section|..., held against a plain model
void TryRegistry(std::string_view input);  // key|value's name|value|text
void TryPaths(std::string_view input);     // a Windows path|a path of this system
void TryModule(std::string_view input);    // folder|template

struct Target {
  const char* name;
  void (*tryInput)(std::string_view input);
};
inline constexpr std::array kTargets = {Target{"profile", TryProfile}, Target{"registry", TryRegistry},
                                        Target{"paths", TryPaths}, Target{"module", TryModule}};

// Ends the program unless the rule holds.
void Require(bool holds, const char* rule);

std::string_view TakeField(std::string_view& input);

}  // namespace fuzz
