#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "platform/profile_text.h"
#include "tests/support/plain_profile.h"

// A text, and any number of changes to it; held against the model after each.
void fuzz::TryProfile(std::string_view input) {
  const std::string_view before = TakeField(input);
  support::PlainProfile plain(before);
  platform::ProfileText text{std::string(before)};
  Require(plain.Text() == before && text.Text() == before, "the text is kept");
  while (!input.empty()) {
    const std::string_view section = TakeField(input);
    const std::string_view key = TakeField(input);
    const std::string_view value = TakeField(input);
    Require(text.Find(section, key) == plain.Find(section, key), "the value found is the model's");
    text.Set(section, key, value);
    plain.Set(section, key, value);
    Require(text.Text() == plain.Text(), "the changed text is the model's");
    Require(text.Find(section, key) == plain.Find(section, key), "and so is what is found in it");
    Require(platform::ProfileText(text.Text()).Find(section, key) == plain.Find(section, key), "also when read anew");
  }
}
