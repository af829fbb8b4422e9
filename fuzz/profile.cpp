#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "settings/profile_text.h"

// A text, and any number of changes to it. The rules for what is found are in tables of the tests.
void fuzz::TryProfile(std::string_view input) {
  const std::string_view before = TakeField(input);
  ProfileText text(before);
  Require(text.Text() == before, "the text is kept");
  while (!input.empty()) {
    const std::string_view section = TakeField(input);
    const std::string_view key = TakeField(input);
    const std::string_view value = TakeField(input);
    const std::string old = text.Text();
    const bool wasThere = text.Find(section, key).has_value();
    text.Set(section, key, value);
    const std::string changed = text.Text();
    Require(ProfileText(changed).Text() == changed, "and so is the changed one");
    Require(ProfileText(changed).Find(section, key) == text.Find(section, key), "read again, it is the same");
    Require(wasThere || changed.size() > old.size(), "what is added takes nothing away");
    const bool isFound = text.Find(section, key) == value;
    text.Set(section, key, value);
    Require(!isFound || text.Text() == changed, "a second time changes nothing");
  }
}
