#include "platform/files.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/paths.h"

namespace platform {
namespace {

class Refusals : public std::error_category {
 public:
  const char* name() const noexcept override { return "file"; }

  std::string message(int code) const override {
    switch (static_cast<FileRefusal>(code)) {
      case FileRefusal::FolderUnknown:
        return "The program's folder is unknown";
      case FileRefusal::NotOrdinary:
        return "It is a device or a pipe, not a file";
      case FileRefusal::TooLarge:
        return "It is larger than 16 MB";
      case FileRefusal::LinkOfAnother:
        return "It is another user's link in a folder that everybody can write to";
      case FileRefusal::Busy:
        return "Another program is using it";
      case FileRefusal::Utf16:
        return "UTF-16 text is not supported";
      case FileRefusal::Program:
        return "It is a program";
      case FileRefusal::OwnFile:
        return "It is one of Gantrel's own files";
    }
    return "Unknown reason";
  }
};

}  // namespace

bool IsMissingFolder(std::string_view windowsPath) {
  const auto path = ToHostPath(windowsPath);
  if (!path) return true;
  std::error_code failure;
  const auto status = std::filesystem::status(AsSpelledOnDisk(*path), failure);
  return std::filesystem::status_known(status) && !std::filesystem::is_directory(status);
}

FoldersBelow::FoldersBelow(const std::string& windowsPath)
    : path_(windowsPath + "\\"),
      names_(ListSubfolders(windowsPath, Hidden::Listed)),
      isMissing_(!names_ && IsMissingFolder(windowsPath)) {
  if (!names_) return;
  for (std::string& name : *names_) std::ranges::transform(name, name.begin(), FoldCase);
  std::ranges::sort(*names_);
}

// Nested paths are looked up one by one.
bool FoldersBelow::IsMissing(std::string_view folder) const {
  if (isMissing_ || !names_) return isMissing_;
  if (folder.empty() || folder.find_first_of("\\/") != std::string_view::npos)
    return IsMissingFolder(path_ + std::string(folder));
  std::string wanted(folder);
  std::ranges::transform(wanted, wanted.begin(), FoldCase);
  return !std::ranges::binary_search(*names_, wanted);
}

std::error_code make_error_code(FileRefusal refusal) {
  static const Refusals refusals;
  return {static_cast<int>(refusal), refusals};
}

bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right) {
  std::error_code failure;
  return std::filesystem::equivalent(AsSpelledOnDisk(left), AsSpelledOnDisk(right), failure);
}

}  // namespace platform
