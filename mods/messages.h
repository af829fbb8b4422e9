#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "settings/file_failure.h"

// What a command tells the user, in one place. It is shown when the command's change has ended: a message waits for the
// user, and a change locks others out.
struct Message {
  std::string text;
  std::string outcome = {};  // what that means for the user's data
  platform::Icon icon = platform::Icon::Critical;
};

// What came of a change: one that was saved may still have something to tell.
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

// Of a failure; nothing when there is none.
std::optional<Message> Failed(const std::optional<FileFailure>& failure);
std::optional<Message> NotMade(const std::optional<FileFailure>& failure);  // of the module file

// "12 of 400 mods were activated." for `all` that stopped in the middle.
std::string HowFar(int done, int all, bool isActivated);

// Shows it under the command's title; nothing when there is none.
void Show(std::string_view title, const std::optional<Message>& message);

}  // namespace messages
