#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>

#include "platform/files.h"
#include "support/own_folder.h"

// A folder with one file, "old", to be replaced.
class ReplacingFiles : public testing::Test {
 protected:
  void SetUp() override {
    support::Reset();
    std::filesystem::create_directory(folder_);
    support::WriteFile(file_, "old");
  }

  static std::error_code Replace(const std::filesystem::path& file, std::string_view bytes) {
    return platform::ReplaceFile({file.native()}, bytes);
  }

  static std::error_code Read(const std::filesystem::path& file) { return platform::FileBytes().Read({file.native()}); }

  auto CountEntries() const {
    return std::distance(std::filesystem::directory_iterator(folder_), std::filesystem::directory_iterator());
  }

  const std::filesystem::path folder_ = support::Root() / u8"f\u00F6lder";
  const std::filesystem::path file_ = folder_ / "File.txt";
};
