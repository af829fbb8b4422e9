#include "platform/qt/accessible.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/native.h"
#include "platform/qt/text.h"

namespace platform {
namespace {

// On some systems the toolkit tells the chosen entry for the name.
class AccessibleDropDownList : public QAccessibleWidget {
 public:
  explicit AccessibleDropDownList(NativeDropDownList& list)
      : QAccessibleWidget(&list, QAccessible::ComboBox), list_(&list) {}

  QString text(QAccessible::Text which) const override {
    if (which == QAccessible::Value) return list_->currentText();
    if (which != QAccessible::Description || !list_->onToolTip) return QAccessibleWidget::text(which);
    return QStringList{ToQt(list_->onToolTip()), list_->accessibleDescription()}.join("\n").trimmed();
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = true;
    state.expanded = list_->view()->isVisible();
    return state;
  }

  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(list_->view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child != nullptr && child->object() == list_->view() ? 0 : -1;
  }

  QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
  void doAction(const QString& action) override {
    if (!actionNames().contains(action)) return QAccessibleWidget::doAction(action);
    list_->view()->isVisible() ? list_->hidePopup() : list_->showPopup();
  }

 private:
  NativeDropDownList* list_;
};

QAccessibleInterface* Describe(const QString& /*kind*/, QObject* object) {
  if (auto* const window = dynamic_cast<NativeWindow*>(object))
    return new QAccessibleWidget(window, QAccessible::Window);
  if (auto* const list = dynamic_cast<NativeDropDownList*>(object)) return new AccessibleDropDownList(*list);
  return nullptr;
}

}  // namespace

void TellScreenReaders() { QAccessible::installFactory(Describe); }

}  // namespace platform
