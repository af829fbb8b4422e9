#include "module_file/module_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ModuleText, TemplateLinesAreCopiedWithCrLf) {
  struct Row {
    const char* rule;
    std::string text;
    std::string lines;
  };
  const Row rows[] = {
      {"an empty template contributes nothing", "", ""},
      {"lines end at CR LF", "a\r\nb\r\n", "a\r\nb\r\n"},
      {"lines end at CR", "a\rb\r", "a\r\nb\r\n"},
      {"a line feed alone is part of its line", "a\nb\r\n\nc", "a\nb\r\n\nc\r\n"},
      {"the last line may be open", "a\r\nb", "a\r\nb\r\n"},
      {"empty lines are lines", "\r\n\r\ra\r\n", "\r\n\r\n\r\na\r\n"},
      {"blanks at a line's end stay", "a = \r\n", "a = \r\n"},
      {"zero bytes and the end-of-file character are text",
       std::string("a\0\x1A"
                   "b\r",
                   5),
       std::string("a\0\x1A"
                   "b\r\n",
                   6)},
  };
  for (const Row& row : rows) {
    std::string module = "before|";
    module_text::AppendTemplate(row.text, module);
    EXPECT_EQ(module, "before|" + row.lines) << row.rule;
  }
}

}  // namespace
