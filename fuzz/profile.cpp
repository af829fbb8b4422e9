#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "platform/profile_text.h"
#include "tests/support/plain_profile.h"

void fuzz::TryProfile(std::string_view input) {
  const std::string_view section = TakeField(input);
  const std::string_view key = TakeField(input);
  const std::string_view value = TakeField(input);

  support::PlainProfile plain(input);
  Require(plain.Text() == input, "the model keeps the text");
  Require(platform::FindValue(input, section, key) == plain.Find(section, key), "the value found is the model's");

  const std::string changed = platform::SetValue(input, section, key, value);
  plain.Set(section, key, value);
  Require(changed == plain.Text(), "the changed text is the model's");
  Require(platform::FindValue(changed, section, key) == plain.Find(section, key), "and so is what is found in it");
  Require(platform::SetValue(changed, section, key, value).size() >= changed.size(), "setting it again takes nothing");
}
