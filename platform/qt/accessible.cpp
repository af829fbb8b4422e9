#include "platform/qt/accessible.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QMetaObject>
#include <algorithm>

#include "platform/qt/native.h"
#include "platform/qt/text.h"

namespace platform {
namespace {

// On some systems Qt reports the selected entry as the name.
class AccessibleDropDownList : public QAccessibleWidget {
 public:
  explicit AccessibleDropDownList(NativeDropDownList& list)
      : QAccessibleWidget(&list, QAccessible::ComboBox), list_(&list) {}

  // The description repeats the selected entry, as not every system reads the value.
  QString text(QAccessible::Text which) const override {
    if (which == QAccessible::Value) return list_->currentText();
    if (which != QAccessible::Description) return QAccessibleWidget::text(which);
    const QString toolTip = list_->onToolTip ? ToQt(list_->onToolTip()) : "";
    QStringList told = {list_->currentText(), toolTip, list_->accessibleDescription()};
    told.removeAll("");
    return told.join("\n");
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = list_->view()->isVisible();
    return state;
  }

  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    if (index != 0) return nullptr;
    // Qt updates the popup's current entry only when it opens.
    if (!list_->view()->isVisible()) list_->view()->setCurrentIndex(list_->model()->index(list_->currentIndex(), 0));
    return QAccessible::queryAccessibleInterface(list_->view());
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child != nullptr && child->object() == list_->view() ? 0 : -1;
  }

  QStringList actionNames() const override {
    return {showMenuAction(), pressAction(), increaseAction(), decreaseAction()};
  }

  // Increase and decrease act like arrow keys, with the focus.
  void doAction(const QString& action) override {
    if (!list_->isEnabled() || IsBlockedByDialog()) return;
    const int step = action == increaseAction() ? 1 : action == decreaseAction() ? -1 : 0;
    if (step != 0) {
      list_->setFocus();
      list_->setCurrentIndex(std::clamp(list_->currentIndex() + step, 0, std::max(list_->count() - 1, 0)));
    } else if (action == showMenuAction() || action == pressAction()) {
      list_->view()->isVisible() ? list_->hidePopup() : list_->showPopup();
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  NativeDropDownList* list_;
};

// Offers commands as actions, named by caption: those of the window, and those of the focused list, or of any list with
// a selection.
class AccessibleWindow : public QAccessibleWidget {
 public:
  explicit AccessibleWindow(NativeWindow& window) : QAccessibleWidget(&window, QAccessible::Window), window_(&window) {}

  QStringList actionNames() const override {
    QStringList names;
    for (const NativeWindow::Command& command : window_->Commands()) names << ToQt(command.layout->caption);
    names.removeDuplicates();
    return names;
  }

  void doAction(const QString& action) override {
    const auto& commands = window_->Commands();
    const auto isMeant = [&](const NativeWindow::Command& command) {
      return ToQt(command.layout->caption) == action && command.CanRun();
    };
    const auto hasFocus = [&](const NativeWindow::Command& command) {
      return isMeant(command) && command.IsFor(window_->focusWidget());
    };
    auto found = std::ranges::find_if(commands, hasFocus);
    if (found == commands.end()) found = std::ranges::find_if(commands, isMeant);
    if (found == commands.end() || !window_->isEnabled()) return;
    // Queued: the command may open a dialog, while the screen reader waits for this call.
    const auto run = [&command = *found] { command.Run(); };
    QMetaObject::invokeMethod(window_, run, Qt::QueuedConnection);
  }

 private:
  NativeWindow* window_;
};

QAccessibleInterface* Describe(const QString& /*kind*/, QObject* object) {
  if (auto* const window = dynamic_cast<NativeWindow*>(object)) return new AccessibleWindow(*window);
  if (auto* const list = dynamic_cast<NativeDropDownList*>(object)) return new AccessibleDropDownList(*list);
  return nullptr;
}

}  // namespace

void TellScreenReaders() { QAccessible::installFactory(Describe); }

}  // namespace platform
