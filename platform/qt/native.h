#pragma once

#include <QComboBox>
#include <QKeyCombination>
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
#include <vector>

#include "platform/layout.h"

// Qt's widgets behind the handles of controls.h and window.h.
namespace platform {

// Whether a dialog is open, which blocks all windows that have a layout. Qt then keeps the mouse and the keyboard from
// their controls, but not a screen reader.
bool IsBlockedByDialog();

struct NativeButton : QPushButton {
  using QPushButton::QPushButton;
  QWidget* focusFallback = nullptr;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

struct NativeDropDownList : QComboBox {
  explicit NativeDropDownList(QWidget* parent);
  std::function<void()> onValidate;
  std::function<std::string()> onToolTip;

 protected:
  bool event(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

struct NativeListBox : QListWidget {
  explicit NativeListBox(QWidget* parent);
  void Fill(const QStringList& entries);
  void SetEmptyText(const QString& text);
  int WidestEntry();
  void Repaint();
  QString emptyText;
  std::function<std::string(int position)> onToolTip;

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;
  void paintEvent(QPaintEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  static constexpr int kNotMeasured = -1;
  int place_ = 0;              // where an arrow key goes on from, while no entry is current
  int widest_ = kNotMeasured;  // the entry, once the list is laid out
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

  void Open();
  void OpenInFrontOf(NativeWindow& other);
  void CloseByItself();
  void Disable();
  void Enable();

  void OnCommand(std::string_view caption, std::function<void()> handler);

  // Carries out the command of the key, while the list has the focus or, where it is null, whatever has. False where
  // there is none.
  bool TakeKey(const QKeyEvent& event, const NativeListBox* list);

  std::map<std::string, QWidget*, std::less<>> controls;
  std::function<void(bool& cancel)> onUnload;
  std::function<void()> onClosed;

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Command {
    QKeyCombination key;
    NativeButton* button = nullptr;
    const NativeListBox* list = nullptr;
    bool repeats = false;
    std::function<void()> handler = {};
  };

  void SetOpen(bool isOpen);
  void KeepClearOfOthers();
  void BringWhatIsInFront();
  void TakeDesktopsSize();
  void AddControl(const ControlLayout& control);
  void ConnectControl(const ControlLayout& control) const;
  void AddCommand(const CommandLayout& layout);
  void SetTabOrder();

  const WindowLayout& layout_;
  std::map<std::string_view, Command> commands_;  // by their captions
  QPushButton* defaultButton_ = nullptr;
  QPushButton* cancelButton_ = nullptr;
  QPointer<NativeWindow> inFront_;
  bool isOpen_ = false;
  bool isEnabled_ = true;
  bool closesByItself_ = false;
};

}  // namespace platform
