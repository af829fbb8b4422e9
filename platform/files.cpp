#include "platform/files.h"

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

std::error_code make_error_code(FileRefusal refusal) {
  static const Refusals refusals;
  return {static_cast<int>(refusal), refusals};
}

bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right) {
  std::error_code failure;
  return std::filesystem::equivalent(AsSpelledOnDisk(left), AsSpelledOnDisk(right), failure);
}

}  // namespace platform
