#include "mods/failure_message.h"

#include "platform/dialogs.h"

void ShowFailure(std::string_view title, const std::optional<FileFailure>& failure) {
  if (!failure) return;
  platform::MsgBox(failure->Sentence() + "\n\n" + failure->outcome, platform::Buttons::Ok, platform::Icon::Critical,
                   title);
}
