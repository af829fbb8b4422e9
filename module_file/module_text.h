#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The text of a module file, built in memory. Every line ends in CR LF.
namespace module_text {

// Appends every line of a template. Its lines end at CR or CR LF, which is not copied; a line feed alone ends no line
// and is copied as part of it. A line end at the template's very end adds no empty line.
void AppendTemplate(std::string_view templateText, std::string& module);

// Appends the line that names one data folder, as it is stored, under its number.
void AppendDataFolder(std::int64_t number, std::string_view folder, std::string& module);

}  // namespace module_text
