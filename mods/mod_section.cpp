#include "mods/mod_section.h"

#include <string>

#include "settings/Module1.h"
#include "settings/schema.h"

using Module1::GetSetting;
using Module1::PutSetting;

void CopyMod(std::string_view game, std::int64_t from, std::int64_t to) {
  const std::string source = schema::ModSection(game, from);
  const std::string target = schema::ModSection(game, to);
  PutSetting(target, "Name", GetSetting(source, "Name", "Unknown"));
  PutSetting(target, "Active", GetSetting(source, "Active", "0"));
  const std::int64_t dirCount = Module1::DirCount(source);
  Module1::PutNumber(target, "DirCount", dirCount);
  for (std::int64_t k = 1; k <= dirCount; ++k) {
    PutSetting(target, schema::DirKey(k), GetSetting(source, schema::DirKey(k), ""));
  }
}
