#include "platform/profile_text.h"

#include <algorithm>
#include <utility>

#include "platform/code_page.h"

namespace platform {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kNewLineEnd = "\r\n";
// So much of a section is searched faster than it is taken apart, and so many lines faster than they are indexed.
constexpr std::size_t kFewBytes = 1024;
constexpr std::size_t kFewLines = 32;

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

// What would break out of a line becomes a blank.
std::string OnOneLine(std::string_view text) {
  std::string line(text);
  for (char& c : line) {
    if (IsLineBreak(c) || c == '\0') c = ' ';
  }
  return line;
}

// The line at the front of the text, without its end.
std::string_view LineOf(std::string_view text) {
  return text.substr(0, static_cast<std::size_t>(std::ranges::find_if(text, IsLineBreak) - text.begin()));
}

std::string_view LineEndOf(std::string_view rest) {
  return rest.substr(0, rest.starts_with(kNewLineEnd) ? 2 : std::min<std::size_t>(rest.size(), 1));
}

// The name of the section whose header the line is; nothing when it is none.
std::optional<std::string_view> SectionName(std::string_view line) {
  const std::string_view content = Trimmed(line);
  const std::size_t end = content.starts_with('[') ? content.rfind(']') : std::string_view::npos;
  if (end == std::string_view::npos) return std::nullopt;
  return Trimmed(content.substr(1, end - 1));
}

// What stands before the equals sign of a line that is no header; nothing when it is no key's line.
std::optional<std::string_view> KeyName(std::string_view line) {
  const std::string_view content = Trimmed(line);
  const std::size_t equals = content.find('=');
  if (equals == std::string_view::npos || content.front() == ';' || content.front() == '[') return std::nullopt;
  return Trimmed(content.substr(0, equals));
}

bool IsLineOf(std::string_view key, std::string_view line) {
  const auto name = KeyName(line);
  return name && SameName(*name, Trimmed(key));
}

std::string_view ValueOf(std::string_view keyLine) {
  const std::string_view content = Trimmed(keyLine);
  return Trimmed(content.substr(content.find('=') + 1));
}

// The value in a section's text, its header included.
std::optional<std::string_view> FindValue(std::string_view section, std::string_view key) {
  while (!section.empty()) {
    const std::string_view line = LineOf(section);
    if (IsLineOf(key, line)) return WithoutQuotes(ValueOf(line));
    section.remove_prefix(line.size());
    section.remove_prefix(LineEndOf(section).size());
  }
  return std::nullopt;
}

// Where the line begins that has only blanks before `position`; nothing when it has more.
std::optional<std::size_t> StartOfLine(std::string_view text, std::size_t position) {
  while (position > 0 && IsBlank(text[position - 1])) --position;
  if (position > 0 && !IsLineBreak(text[position - 1])) return std::nullopt;
  return position;
}

struct Header {
  std::size_t begin;  // of its line
  std::size_t end;
  std::string_view name;
};

// The first at or after a position. Looks for brackets rather than at every line: there are few of them, and the search
// for one byte runs at the speed of memory.
std::optional<Header> NextHeader(std::string_view text, std::size_t position) {
  for (std::size_t at = text.find('[', position); at != std::string_view::npos; at = text.find('[', at)) {
    const auto begin = StartOfLine(text, at);
    const std::string_view line = begin ? LineOf(text.substr(at)) : text.substr(at, 1);
    at += line.size();
    if (const auto name = SectionName(line)) return Header{*begin, at, *name};
  }
  return std::nullopt;
}

std::string_view MarkOf(std::string_view text) {
  return text.substr(0, text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
}

}  // namespace

// The same for all letter cases: in ASCII they differ in one bit.
std::size_t ProfileText::Hash::operator()(std::string_view name) const {
  std::size_t hash = 0;
  for (const char c : name) {
    const bool isAscii = static_cast<unsigned char>(c) < 0x80;
    hash = hash * 31 + (static_cast<unsigned char>(isAscii ? c : FoldCase(c)) | 0x20U);
  }
  return hash;
}

bool ProfileText::Equal::operator()(std::string_view left, std::string_view right) const {
  return SameName(left, right);
}

ProfileText::ProfileText(std::string text) { TakeApart(std::move(text)); }

std::string_view ProfileText::Keep(std::string text) { return texts_.emplace_back(std::move(text)); }

std::optional<std::string_view> ProfileText::FindIn(std::string_view text, std::string_view section,
                                                    std::string_view key) {
  text.remove_prefix(MarkOf(text).size());
  for (auto header = NextHeader(text, 0); header; header = NextHeader(text, header->end)) {
    if (!SameName(header->name, Trimmed(section))) continue;
    const auto next = NextHeader(text, header->end);
    return FindValue(text.substr(header->begin, next ? next->begin - header->begin : std::string_view::npos), key);
  }
  return std::nullopt;
}

void ProfileText::TakeApart(std::string wholeText) {
  std::string_view text = Keep(std::move(wholeText));
  mark_ = MarkOf(text);
  text.remove_prefix(mark_.size());
  lineEnd_ = LineEndOf(text.substr(LineOf(text).size()));
  if (lineEnd_.empty()) lineEnd_ = kNewLineEnd;

  sections_.clear();
  places_.clear();
  std::size_t begin = 0;
  for (auto header = NextHeader(text, 0); header; header = NextHeader(text, header->end)) {
    sections_.push_back({text.substr(begin, header->begin - begin)});
    places_.emplace(header->name, sections_.size());
    begin = header->begin;
  }
  sections_.push_back({text.substr(begin)});
}

ProfileText::Line ProfileText::TakeLine(std::string_view& text) {
  const std::string_view content = LineOf(text);
  const std::string_view end = LineEndOf(text.substr(content.size()));
  text.remove_prefix(content.size() + end.size());
  return {content, end};
}

std::vector<ProfileText::Line>& ProfileText::Lines(Section& section) {
  if (section.lines.empty()) section.lines.reserve(8);
  for (std::string_view rest = section.lines.empty() ? section.text : ""; !rest.empty();) {
    section.lines.push_back(TakeLine(rest));
  }
  return section.lines;
}

ProfileText::Section* ProfileText::FindSection(std::string_view name) {
  const auto place = places_.find(Trimmed(name));
  return place == places_.end() ? nullptr : &sections_[place->second];
}

ProfileText::Line* ProfileText::FindLine(Section& section, std::string_view key) {
  std::vector<Line>& lines = Lines(section);
  if (lines.size() <= kFewLines) {
    const auto line = std::ranges::find_if(lines, [key](const Line& one) { return IsLineOf(key, one.content); });
    return line == lines.end() ? nullptr : &*line;
  }
  if (section.keys.empty()) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (const auto name = KeyName(lines[i].content)) section.keys.emplace(*name, i);
    }
  }
  const auto place = section.keys.find(Trimmed(key));
  return place == section.keys.end() ? nullptr : &lines[place->second];
}

std::optional<std::string_view> ProfileText::Find(std::string_view section, std::string_view key) {
  Section* const found = FindSection(section);
  if (found == nullptr) return std::nullopt;
  if (found->lines.empty() && found->text.size() <= kFewBytes) return FindValue(found->text, key);
  const Line* const line = FindLine(*found, key);
  if (line == nullptr) return std::nullopt;
  return WithoutQuotes(ValueOf(line->content));
}

void ProfileText::Set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string sectionName = OnOneLine(section);
  const std::string keyName = OnOneLine(Trimmed(key));
  const std::string newValue = OnOneLine(value);
  Section* const old = FindSection(sectionName);
  if (Line* const line = old != nullptr ? FindLine(*old, keyName) : nullptr) {
    const std::string_view oldValue = ValueOf(line->content);
    std::string content(line->content);
    content.replace(static_cast<std::size_t>(oldValue.data() - line->content.data()), oldValue.size(), newValue);
    line->content = Keep(std::move(content));
  } else {
    AddLine(old != nullptr ? *old : AddSection("[" + sectionName + "]"), keyName + "=" + newValue);
  }
}

ProfileText::Section& ProfileText::AddSection(std::string header) {
  if (auto& lastLines = Lines(sections_.back()); !lastLines.empty() && lastLines.back().end.empty()) {
    lastLines.back().end = lineEnd_;
  }
  const std::string_view line = Keep(std::move(header));
  places_.emplace(*SectionName(line), sections_.size());
  return sections_.emplace_back(Section{.text = {}, .lines = {{line, lineEnd_}}});
}

void ProfileText::AddLine(Section& section, std::string content) {
  std::vector<Line>& lines = Lines(section);
  std::size_t at = lines.size();
  while (Trimmed(lines[at - 1].content).empty()) --at;  // the header is not blank
  if (lines[at - 1].end.empty()) lines[at - 1].end = lineEnd_;
  const std::string_view line = Keep(std::move(content));
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), {line, lineEnd_});
  if (const auto name = KeyName(line); name && !section.keys.empty()) section.keys.emplace(*name, at);
  if (SectionName(line)) TakeApart(Text());  // a key that looks like a header becomes one
}

std::string ProfileText::Text() const {
  std::string text(mark_);
  for (const Section& section : sections_) {
    if (section.lines.empty()) text += section.text;
    for (const Line& line : section.lines) text.append(line.content).append(line.end);
  }
  return text;
}

}  // namespace platform
