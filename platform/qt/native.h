#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/layout.h"

// The toolkit's widgets behind the handles of controls.h and window.h.
namespace platform {

struct NativeButton : QPushButton {
  using QPushButton::QPushButton;
  QWidget* fills = nullptr;
};

struct NativeDropDownList : QComboBox {
  explicit NativeDropDownList(QWidget* parent);
  std::function<void()> onValidate;

 protected:
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

struct NativeListBox : QListWidget {
  using QListWidget::QListWidget;
  QString emptyText;

 protected:
  bool event(QEvent* event) override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;
  void paintEvent(QPaintEvent* event) override;
};

struct NativeTextBox : QLineEdit {
  explicit NativeTextBox(QWidget* parent);
};

// Leaves out what the code page cannot spell, and says so in a tooltip below the box and in its description.
void KeepToCodePage(QLineEdit& box);

struct NativeWindow : QWidget {
  explicit NativeWindow(const WindowLayout& layout);
  ~NativeWindow() override;
  NativeWindow(const NativeWindow&) = delete;
  NativeWindow& operator=(const NativeWindow&) = delete;
  NativeWindow(NativeWindow&&) = delete;
  NativeWindow& operator=(NativeWindow&&) = delete;

  void Open();
  void OpenInFrontOf(NativeWindow& other);
  void CloseByItself();
  void TakeOutOfUse();
  void PutBackIntoUse();

  std::map<std::string, QWidget*, std::less<>> controls;
  std::function<void(bool& cancel)> onUnload;
  std::function<void()> onClosed;

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void SetOpen(bool isOpen);
  void BringWhatIsInFront();
  void TakeDesktopsSize();
  void AddControl(const ControlLayout& control);
  void ConnectControl(const ControlLayout& control);
  void SetTabOrder();

  const WindowLayout& layout_;
  QPushButton* defaultButton_ = nullptr;
  QPushButton* cancelButton_ = nullptr;
  QPointer<NativeWindow> inFront_;
  bool isOpen_ = false;
  bool isInUse_ = true;
  bool closesByItself_ = false;
};

}  // namespace platform
