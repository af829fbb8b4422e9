#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "settings/file_failure.h"

// All messages of the commands. Show one only after the command's change has ended: it waits for the user, and a change
// locks others out.
struct Message {
  std::string text;
  std::string outcome = {};  // the effect on the user's data
  platform::Icon icon = platform::Icon::Critical;
};

// The result of a change. Even a saved change may have a message.
struct Outcome {
  bool isSaved = true;
  std::optional<Message> message = {};
};

namespace messages {

Message NoGame();
Message NameIsBlank();
Message NameIsTaken();
Message ModIsGone(const std::string& mod);
Message NotOpened(const std::string& folder);

// For a failure; nothing without one.
std::optional<Message> Failed(const std::optional<FileFailure>& failure);
std::optional<Message> NotMade(const std::optional<FileFailure>& failure);  // for the module file

// "12 of 400 mods were activated.", when `all` stopped part way.
std::string HowFar(int done, int all, bool isActivated);

// Shows it under the command's title, if there is one.
void Show(std::string_view title, const std::optional<Message>& message);

}  // namespace messages
