#include <string>
#include <string_view>

#include "fuzz/targets.h"
#include "module_file/module_text.h"

namespace {

// Character by character: a line ends at CR, and a LF behind it belongs to its end.
std::string PlainTemplate(std::string_view text) {
  std::string module;
  bool isInLine = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    isInLine = text[i] != '\r';
    if (isInLine) {
      module += text[i];
      continue;
    }
    module += "\r\n";
    if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
  }
  return isInLine ? module + "\r\n" : module;
}

}  // namespace

void fuzz::TryModule(std::string_view input) {
  const std::string_view folder = TakeField(input);
  std::string module = "above";
  module_text::AppendTemplate(input, module);
  Require(module == "above" + PlainTemplate(input), "a template's lines are the model's");
  const std::string lines = module;
  module_text::AppendDataFolder(static_cast<std::int64_t>(input.size()), folder, module);
  Require(module == lines + "DataFolder." + std::to_string(input.size()) + " = " + std::string(folder) + "\r\n",
          "a folder is one line");
}
