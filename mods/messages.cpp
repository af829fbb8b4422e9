#include "mods/messages.h"

#include "platform/dialogs.h"

namespace messages {

using platform::Icon;

Message NoGame() { return {.text = "Please set up a game first.", .icon = Icon::Exclamation}; }
Message NameIsBlank() { return {.text = "Please enter a name for the mod.", .icon = Icon::Exclamation}; }
Message NameIsTaken() { return {.text = "Please enter a unique name.", .icon = Icon::Information}; }
Message ModIsGone(const std::string& mod) {
  return {.text = "The mod '" + mod + "' no longer exists.", .icon = Icon::Exclamation};
}
Message NotOpened(const std::string& folder) { return {.text = folder + " could not be opened."}; }

std::optional<Message> Failed(const std::optional<FileFailure>& failure) {
  return failure ? std::optional(Message{failure->Sentence(), "Nothing was changed."}) : std::nullopt;
}

std::optional<Message> NotMade(const std::optional<FileFailure>& failure) {
  return failure ? std::optional(Message{failure->Sentence(), "The module file was not changed."}) : std::nullopt;
}

std::string HowFar(int done, int all, bool isActivated) {
  return std::to_string(done) + " of " + std::to_string(all) +
         (isActivated ? " mods were activated." : " mods were deactivated.");
}

void Show(std::string_view title, const std::optional<Message>& message) {
  if (!message) return;
  const std::string text = message->outcome.empty() ? message->text : message->text + "\n\n" + message->outcome;
  platform::MsgBox(text, platform::Buttons::Ok, message->icon, title);
}

}  // namespace messages
