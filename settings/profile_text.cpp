#include "settings/profile_text.h"

#include <algorithm>

#include "platform/code_page.h"

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

std::string OnOneLine(std::string_view text) {
  std::string line(text);
  const auto breaksOut = [](char c) { return IsLineBreak(c) || c == '\0'; };
  std::ranges::replace_if(line, breaksOut, ' ');
  return line;
}

// The first line, without its line end.
std::string_view LineOf(std::string_view text) {
  return text.substr(0, static_cast<std::size_t>(std::ranges::find_if(text, IsLineBreak) - text.begin()));
}

std::string_view LineEndOf(std::string_view rest) {
  return rest.substr(0, rest.starts_with(kNewLineEnd) ? 2 : std::min<std::size_t>(rest.size(), 1));
}

// The section's name if the line is a header; otherwise nothing.
std::optional<std::string_view> SectionName(std::string_view line) {
  const std::string_view content = Trimmed(line);
  const std::size_t end = content.starts_with('[') ? content.rfind(']') : std::string_view::npos;
  if (end == std::string_view::npos) return std::nullopt;
  return Trimmed(content.substr(1, end - 1));
}

// The raw value, with quotes, of the first line with this key. Points into `section`. Searches for "=" instead of
// splitting lines: a search for one byte is fast.
std::optional<std::string_view> FindValue(std::string_view section, std::string_view key) {
  key = Trimmed(key);
  std::size_t from = 0;  // after the previous "="
  for (std::size_t equals = section.find('='); equals != std::string_view::npos; equals = section.find('=', from)) {
    std::size_t begin = equals;
    while (begin > from && !IsLineBreak(section[begin - 1])) --begin;
    const bool isFirstOfLine = begin > from || from == 0;
    from = equals + 1;
    const std::string_view name = Trimmed(section.substr(begin, equals - begin));
    const bool isKey = isFirstOfLine && !name.starts_with(';') && !name.starts_with('[');
    if (isKey && platform::SameName(name, key)) return Trimmed(LineOf(section.substr(equals + 1)));
  }
  return std::nullopt;
}

// The start of the line, if only blanks precede `position`; otherwise nothing.
std::optional<std::size_t> StartOfLine(std::string_view text, std::size_t position) {
  while (position > 0 && IsBlank(text[position - 1])) --position;
  if (position > 0 && !IsLineBreak(text[position - 1])) return std::nullopt;
  return position;
}

struct Header {
  std::size_t begin;  // of the line
  std::size_t end;
  std::string_view name;
};

// The first header at or after a position. Searches for "[" instead of splitting lines: brackets are rare, and a search
// for one byte runs at memory speed.
std::optional<Header> NextHeader(std::string_view text, std::size_t position) {
  for (std::size_t at = text.find('[', position); at != std::string_view::npos; at = text.find('[', at)) {
    const auto begin = StartOfLine(text, at);
    const std::string_view line = begin ? LineOf(text.substr(at)) : text.substr(at, 1);
    at += line.size();
    if (const auto name = SectionName(line)) return Header{*begin, at, *name};
  }
  return std::nullopt;
}

}  // namespace

std::size_t ProfileText::Hash::operator()(std::string_view name) const {
  std::size_t hash = 0;
  for (const char c : name) hash = hash * 31 + static_cast<unsigned char>(platform::FoldCase(c));
  return hash;
}

bool ProfileText::Equal::operator()(std::string_view left, std::string_view right) const {
  return platform::SameName(left, right);
}

void ProfileText::Parse(std::string_view text) {
  mark_ = text.substr(0, text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
  text.remove_prefix(mark_.size());
  lineEnd_ = LineEndOf(text.substr(LineOf(text).size()));
  if (lineEnd_.empty()) lineEnd_ = kNewLineEnd;

  sections_.clear();
  places_.clear();
  std::size_t begin = 0;
  for (auto header = NextHeader(text, 0); header; header = NextHeader(text, header->end)) {
    sections_.emplace_back(text.substr(begin, header->begin - begin));
    places_.emplace(header->name, sections_.size());
    begin = header->begin;
  }
  sections_.emplace_back(text.substr(begin));
}

std::optional<std::size_t> ProfileText::FindSection(std::string_view name) const {
  const auto place = places_.find(Trimmed(name));
  return place == places_.end() ? std::nullopt : std::optional(place->second);
}

std::optional<std::string_view> ProfileText::Find(std::string_view section, std::string_view key) const {
  const auto place = FindSection(section);
  const auto value = place ? FindValue(sections_[*place], key) : std::nullopt;
  return value ? std::optional(WithoutQuotes(*value)) : std::nullopt;
}

void ProfileText::Set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string sectionName = OnOneLine(section);
  const std::string keyName = OnOneLine(Trimmed(key));
  const auto place = FindSection(sectionName);
  std::string& text = sections_[place ? *place : AddSection(sectionName)];
  if (const auto old = FindValue(text, keyName)) {
    text.replace(static_cast<std::size_t>(old->data() - text.data()), old->size(), OnOneLine(value));
    return;
  }
  const std::string line = keyName + "=" + OnOneLine(value);
  AddLine(text, line);
  if (SectionName(line)) Parse(Text());  // a key line may turn into a header
}

std::size_t ProfileText::AddSection(std::string_view name) {
  if (std::string& last = sections_.back(); !last.empty() && !IsLineBreak(last.back())) last += lineEnd_;
  places_.emplace(Trimmed(name), sections_.size());
  sections_.push_back("[" + std::string(name) + "]");
  return sections_.size() - 1;
}

void ProfileText::AddLine(std::string& section, const std::string& line) const {
  const std::size_t lastLine = section.find_last_not_of(" \t\r\n");  // the header is not blank
  const std::size_t end = std::min(section.find_first_of("\r\n", lastLine), section.size());
  if (end == section.size()) section += lineEnd_;
  section.insert(end + LineEndOf(std::string_view(section).substr(end)).size(), line + lineEnd_);
}

std::string ProfileText::Text() const {
  std::string text = mark_;
  for (const std::string& section : sections_) text += section;
  return text;
}
