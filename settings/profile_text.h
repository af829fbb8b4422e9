#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// The text of a profile (INI) file, and its rules. Nothing here opens a file.
//
// A line ends at CR LF, LF or CR. A section's header is "[", its name and "]", the last one on the line, so that a
// name may contain brackets; a key's line is what stands before its first "=". Any other line, and one that begins
// with ";", is passed over. Names match without regard to letter case and to the blanks around them, and the first
// match counts. A UTF-8 byte-order mark at the start is no part of the first line.
class ProfileText {
 public:
  explicit ProfileText(std::string_view text) { Parse(text); }

  // The value of `key` in `section`, without the blanks around it and then without one pair of quotes; nothing when the
  // section or the key is missing. Valid until the next Set.
  std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;

  // Every byte that this does not concern stays as it is: line ends, blank lines, comments, the letter case of names. A
  // new key follows the section's last line that is not blank, a new section the end of the text. New lines end as the
  // text's first line does, or in CR LF. Line breaks and NUL in the arguments become blanks, so that nothing breaks out
  // of its line.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  std::string Text() const;

 private:
  void Parse(std::string_view text);
  std::optional<std::size_t> FindSection(std::string_view name) const;
  std::size_t AddSection(std::string_view name);
  void AddLine(std::string& section, const std::string& line) const;

  // Of names without regard to their letter case.
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const;
  };
  struct Equal {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const;
  };

  std::string mark_;
  std::string lineEnd_;                // of new lines
  std::vector<std::string> sections_;  // each from its header on; the first is above all headers
  std::unordered_map<std::string, std::size_t, Hash, Equal> places_;  // the first section of each name
};
