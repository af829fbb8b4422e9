#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

// The text of a profile (INI) file, and its rules. Nothing here opens a file.
//
// A line ends at CR LF, LF or CR. A section's header is "[", its name and "]", the last one on the line, so that a
// name may contain brackets; a key's line is what stands before its first "=". Any other line, and one that begins
// with ";", is passed over. Names match without regard to letter case and to the blanks around them, and the first
// match counts. A UTF-8 byte-order mark at the start is no part of the first line.
//
// The text is taken apart once, into its sections; a section, when it is first looked at, into its lines. So looking up
// and setting cost the same wherever the key is.
class ProfileText {
 public:
  explicit ProfileText(std::string text);

  // One look-up in a text that is not taken apart: what Find would give. Valid as long as `text`.
  static std::optional<std::string_view> FindIn(std::string_view text, std::string_view section, std::string_view key);

  // The value of `key` in `section`, without the blanks around it and then without one pair of quotes; nothing when the
  // section or the key is missing. Valid as long as the text.
  std::optional<std::string_view> Find(std::string_view section, std::string_view key);

  // Every byte that this does not concern stays as it is: line ends, blank lines, comments, the letter case of names. A
  // new key follows the section's last line that is not blank, a new section the end of the text. New lines end as the
  // text's first line does, or in CR LF. Line breaks and NUL in the arguments become blanks, so that nothing breaks out
  // of its line.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  std::string Text() const;

 private:
  struct Hash {
    std::size_t operator()(std::string_view name) const;
  };
  struct Equal {
    bool operator()(std::string_view left, std::string_view right) const;
  };
  using Places = std::unordered_map<std::string_view, std::size_t, Hash, Equal>;

  struct Line {
    std::string_view content;
    std::string_view end;
  };
  struct Section {
    std::string_view text;         // as it was read, with its header
    std::vector<Line> lines = {};  // the same, taken apart; empty until it is looked at
    Places keys = {};              // the first line of each key; empty while the lines are few
  };

  void TakeApart(std::string wholeText);
  static Line TakeLine(std::string_view& text);
  static std::vector<Line>& Lines(Section& section);
  Section* FindSection(std::string_view name);
  static Line* FindLine(Section& section, std::string_view key);
  Section& AddSection(std::string header);
  void AddLine(Section& section, std::string content);
  std::string_view Keep(std::string text);

  std::deque<std::string> texts_;  // what all views point into; nothing is taken out
  std::string_view mark_;
  std::string_view lineEnd_;       // of new lines
  std::vector<Section> sections_;  // the first is what stands above all headers
  Places places_;                  // the first section of each name
};

}  // namespace platform
