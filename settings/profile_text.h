#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// The text of a profile (INI) file, and its rules. Opens no file.
//
// A line ends with CR LF, LF or CR. A section header starts with "[" and ends at the last "]" of the line, so names may
// contain brackets. In a key line, the key is the text before the first "=". Other lines, and lines that begin with
// ";", are ignored. Names match ignoring letter case and surrounding blanks; the first match counts. A leading UTF-8
// byte-order mark is not part of the first line.
class ProfileText {
 public:
  explicit ProfileText(std::string_view text) { Parse(text); }

  // The value of `key` in `section`, trimmed, then without one pair of quotes; nothing if the section or the key is
  // missing. Valid until the next Set.
  std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;

  // Leaves all other bytes unchanged: line ends, blank lines, comments, letter case of names. A new key goes after the
  // last non-blank line of its section, a new section at the end. New lines end like the first line, or with CR LF.
  // Line breaks and NUL in the arguments become blanks, so that a value cannot break out of its line.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  std::string Text() const;

 private:
  void Parse(std::string_view text);
  std::optional<std::size_t> FindSection(std::string_view name) const;
  std::size_t AddSection(std::string_view name);
  void AddLine(std::string& section, const std::string& line) const;

  // Hash of names, ignoring letter case.
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const;
  };
  struct Equal {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const;
  };

  std::string mark_;
  std::string lineEnd_;                // for new lines
  std::vector<std::string> sections_;  // each starts with its header; the first is the text above all headers
  std::unordered_map<std::string, std::size_t, Hash, Equal> places_;  // the first section of each name
};
