#include "module_file/module_text.h"

#include <algorithm>

namespace module_text {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

void AppendTemplate(std::string_view templateText, std::string& module) {
  while (!templateText.empty()) {
    const std::size_t length = std::min(templateText.find('\r'), templateText.size());
    module += templateText.substr(0, length);
    module += kLineEnd;
    templateText.remove_prefix(length);
    if (!templateText.empty()) templateText.remove_prefix(templateText.starts_with(kLineEnd) ? 2 : 1);
  }
}

void AppendDataFolder(std::int64_t number, std::string_view folder, std::string& module) {
  module += "DataFolder.";
  module += std::to_string(number);
  module += " = ";
  module += folder;
  module += kLineEnd;
}

}  // namespace module_text
