#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/targets.h"
#include "platform/code_page.h"
#include "settings/profile_text.h"

namespace {

std::string Trimmed(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
  return std::string(text.substr(begin, text.find_last_not_of(" \t") + 1 - begin));
}

std::string OnOneLine(std::string text) {
  const auto breaksOut = [](char c) { return c == '\r' || c == '\n' || c == '\0'; };
  std::ranges::replace_if(text, breaksOut, ' ');
  return text;
}

// The section that a line begins, if it does.
std::optional<std::string> NameOf(const std::string& line) {
  const std::string content = Trimmed(line);
  const std::size_t end = content.rfind(']');
  if (!content.starts_with('[') || end == std::string::npos) return std::nullopt;
  return Trimmed(content.substr(1, end - 1));
}

std::string ValueOf(const std::string& line) { return Trimmed(line.substr(line.find('=') + 1)); }

// The rules of profile_text.h once more, in the plainest words and without a thought for speed: the text is taken
// apart into lines, looked at or changed, and put together again.
class PlainProfile {
 public:
  explicit PlainProfile(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) mark_ = text.substr(0, 3);
    text.remove_prefix(mark_.size());
    while (!text.empty()) {
      const std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
      const std::string_view rest = text.substr(length);
      const std::size_t end = rest.starts_with("\r\n") ? 2 : std::min<std::size_t>(rest.size(), 1);
      lines_.push_back({std::string(text.substr(0, length)), std::string(rest.substr(0, end))});
      text.remove_prefix(length + end);
    }
  }

  std::optional<std::string> Find(std::string_view section, std::string_view key) const {
    const auto place = FindKey(section, key);
    if (!place) return std::nullopt;
    std::string value = ValueOf(lines_[*place].content);
    const bool isQuoted = value.size() > 1 && value.front() == value.back() && (value[0] == '"' || value[0] == '\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
  }

  void Set(std::string_view section, std::string_view key, std::string_view value) {
    const std::string name = OnOneLine(std::string(section));
    const std::string keyName = OnOneLine(Trimmed(key));
    const std::string newValue = OnOneLine(std::string(value));
    const std::string lineEnd = lines_.empty() || lines_[0].end.empty() ? "\r\n" : lines_[0].end;
    if (const auto place = FindKey(name, keyName)) {
      std::string& line = lines_[*place].content;
      const std::size_t afterSign = line.find('=') + 1;
      const std::size_t oldSize = ValueOf(line).size();
      line.replace(oldSize == 0 ? afterSign : line.find_first_not_of(" \t", afterSign), oldSize, newValue);
      return;
    }
    std::size_t at = lines_.size();
    std::vector<Line> added = {{keyName + "=" + newValue, lineEnd}};
    if (const auto header = FindHeader(name)) {
      at = *header + 1;
      for (std::size_t i = at; i < lines_.size() && !NameOf(lines_[i].content); ++i) {
        if (!Trimmed(lines_[i].content).empty()) at = i + 1;
      }
    } else {
      added.insert(added.begin(), {"[" + name + "]", lineEnd});
    }
    if (at > 0 && lines_[at - 1].end.empty()) lines_[at - 1].end = lineEnd;
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), added.begin(), added.end());
    *this = PlainProfile(Text());  // a key may be a header now, and CR and LF of two lines one end
  }

  std::string Text() const {
    std::string text = mark_;
    for (const Line& line : lines_) text += line.content + line.end;
    return text;
  }

 private:
  struct Line {
    std::string content;
    std::string end;
  };

  std::optional<std::size_t> FindHeader(std::string_view section) const {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      const auto name = NameOf(lines_[i].content);
      if (name && platform::SameName(*name, Trimmed(section))) return i;
    }
    return std::nullopt;
  }

  std::optional<std::size_t> FindKey(std::string_view section, std::string_view key) const {
    for (std::size_t i = FindHeader(section).value_or(lines_.size()) + 1; i < lines_.size(); ++i) {
      const std::string content = Trimmed(lines_[i].content);
      if (NameOf(content)) break;
      const std::size_t equals = content.find('=');
      if (equals == std::string::npos || content[0] == ';' || content[0] == '[') continue;
      if (platform::SameName(Trimmed(content.substr(0, equals)), Trimmed(key))) return i;
    }
    return std::nullopt;
  }

  std::string mark_;
  std::vector<Line> lines_;
};

}  // namespace

// A text, and any number of changes to it; held against the model after each.
void fuzz::TryProfile(std::string_view input) {
  const std::string_view before = TakeField(input);
  PlainProfile plain(before);
  ProfileText text(before);
  Require(plain.Text() == before && text.Text() == before, "the text is kept");
  while (!input.empty()) {
    const std::string_view section = TakeField(input);
    const std::string_view key = TakeField(input);
    const std::string_view value = TakeField(input);
    const auto requireTheSameIsFound = [&] {
      Require(text.Find(section, key) == plain.Find(section, key), "the value found is the model's");
    };
    requireTheSameIsFound();
    text.Set(section, key, value);
    plain.Set(section, key, value);
    Require(text.Text() == plain.Text(), "the changed text is the model's");
    requireTheSameIsFound();
  }
}
