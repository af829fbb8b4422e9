#include "platform/profile_text.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>

#include "platform/code_page.h"

namespace platform {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kNewLineEnd = "\r\n";

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }
constexpr bool IsLineBreak(char c) { return c == '\n' || c == '\r'; }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view WithoutQuotes(std::string_view value) {
  const bool isQuoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return isQuoted ? value.substr(1, value.size() - 2) : value;
}

// A stretch of the text, by positions.
struct Span {
  std::size_t begin;
  std::size_t end;
};

// The text, looked at section by section and line by line. Both reading and writing stand on it.
class Scanner {
 public:
  explicit Scanner(std::string_view text)
      : text_(text), start_(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0) {}

  std::string_view At(Span span) const { return text_.substr(span.begin, span.end - span.begin); }

  // Whether a line may begin here.
  bool IsLineStart(std::size_t position) const { return position == start_ || IsLineBreak(text_[position - 1]); }

  // The line end that the text uses; nothing when it has none yet.
  std::string_view FirstLineEnd() const {
    const Span line = LineAt(start_);
    return At({line.end, NextLine(line)});
  }

  // Where the lines of `section` begin, after its header. Looks for brackets rather than at every line: there are few
  // of them, and the search for one byte runs at the speed of memory.
  std::optional<std::size_t> FindSection(std::string_view section) const {
    std::size_t bracket = text_.find('[', start_);
    while (bracket != std::string_view::npos && !IsHeaderOf(section, bracket)) bracket = text_.find('[', bracket + 1);
    if (bracket == std::string_view::npos) return std::nullopt;
    return NextLine(LineAt(bracket));
  }

  // The value of `key`, without the blanks around it, in the section whose lines begin at `from`.
  std::optional<Span> FindKey(std::size_t from, std::string_view key) const {
    while (from < text_.size()) {
      const Span line = LineAt(from);
      const std::string_view content = Trimmed(At(line));
      if (IsHeader(content)) return std::nullopt;
      const std::size_t equals = content.find('=');
      if (equals != std::string_view::npos && content.front() != ';' && content.front() != '[' &&
          SameName(Trimmed(content.substr(0, equals)), key)) {
        return SpanOf(Trimmed(content.substr(equals + 1)));
      }
      from = NextLine(line);
    }
    return std::nullopt;
  }

  // Where a line may be added to the section whose lines begin at `from`: after its last line that is not blank.
  std::size_t EndOfSection(std::size_t from) const {
    std::size_t end = from;
    while (from < text_.size()) {
      const Span line = LineAt(from);
      const std::string_view content = Trimmed(At(line));
      if (IsHeader(content)) break;
      from = NextLine(line);
      if (!content.empty()) end = from;
    }
    return end;
  }

  std::size_t EndOfText() const { return text_.size(); }

 private:
  static bool IsHeader(std::string_view content) {
    return content.starts_with('[') && content.find(']') != std::string_view::npos;
  }

  // `part` is a part of the text.
  Span SpanOf(std::string_view part) const {
    const auto begin = static_cast<std::size_t>(part.data() - text_.data());
    return {begin, begin + part.size()};
  }

  Span LineAt(std::size_t from) const {
    const std::string_view rest = text_.substr(from);
    return {from, from + static_cast<std::size_t>(std::ranges::find_if(rest, IsLineBreak) - rest.begin())};
  }

  std::size_t NextLine(Span line) const {
    if (line.end == text_.size()) return line.end;
    return line.end + (text_.substr(line.end, 2) == "\r\n" ? 2 : 1);
  }

  // Whether the header of `section` begins at `bracket`. Most other headers have no bracket where this one closes, and
  // are passed over without a look at the rest.
  bool IsHeaderOf(std::string_view section, std::size_t bracket) const {
    const std::size_t length = section.size();
    if (text_.size() - bracket < length + 2 || text_[bracket + 1 + length] != ']') return false;
    return SameName(text_.substr(bracket + 1, length), section) && StartsItsLine(bracket) &&
           At(LineAt(bracket)).rfind(']') == length + 1;
  }

  // Whether only blanks stand before `position` on its line.
  bool StartsItsLine(std::size_t position) const {
    while (position > start_ && IsBlank(text_[position - 1])) --position;
    return IsLineStart(position);
  }

  std::string_view text_;
  std::size_t start_;
};

// What would break out of a line is written as a blank.
std::string OnOneLine(std::string_view text) {
  std::string line(text);
  std::ranges::replace_if(
      line, [](char c) { return IsLineBreak(c) || c == '\0'; }, ' ');
  return line;
}

std::string Replaced(std::string_view text, Span span, std::initializer_list<std::string_view> parts) {
  std::string result;
  std::size_t size = text.size();
  for (const auto part : parts) size += part.size();
  result.reserve(size);
  result += text.substr(0, span.begin);
  for (const auto part : parts) result += part;
  result += text.substr(span.end);
  return result;
}

}  // namespace

std::optional<std::string_view> FindValue(std::string_view text, std::string_view section, std::string_view key) {
  const Scanner scanner(text);
  const auto lines = scanner.FindSection(section);
  if (!lines) return std::nullopt;
  const auto value = scanner.FindKey(*lines, Trimmed(key));
  if (!value) return std::nullopt;
  return WithoutQuotes(scanner.At(*value));
}

std::string SetValue(std::string_view text, std::string_view section, std::string_view key, std::string_view value) {
  const std::string sectionName = OnOneLine(section);
  const std::string keyName = OnOneLine(Trimmed(key));
  const std::string newValue = OnOneLine(value);
  const Scanner scanner(text);

  const auto lines = scanner.FindSection(sectionName);
  if (lines) {
    if (const auto oldValue = scanner.FindKey(*lines, keyName)) return Replaced(text, *oldValue, {newValue});
  }

  const std::string_view ownLineEnd = scanner.FirstLineEnd();
  const std::string_view lineEnd = ownLineEnd.empty() ? kNewLineEnd : ownLineEnd;
  const std::size_t at = lines ? scanner.EndOfSection(*lines) : scanner.EndOfText();
  const std::string_view closing = scanner.IsLineStart(at) ? std::string_view() : lineEnd;
  const std::string header = lines ? std::string() : "[" + sectionName + "]" + std::string(lineEnd);
  return Replaced(text, {at, at}, {closing, header, keyName, "=", newValue, lineEnd});
}

}  // namespace platform
