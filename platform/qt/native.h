#pragma once

#include <QBasicTimer>
#include <QComboBox>
#include <QKeyCombination>
#include <QLineEdit>
#include <QListWidget>
#include <QPoint>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <QWidget>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/find_name.h"
#include "platform/layout.h"

// The Qt widgets behind the handles of controls.h and window.h.
class QLabel;

namespace platform {

// Whether a dialog is open. It blocks all windows that have a layout. Qt then blocks mouse and keyboard, but not screen
// readers.
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
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

struct NativeListBox : QListWidget {
  explicit NativeListBox(QWidget* parent);
  void Fill(const QStringList& entries);
  void SetMarks(std::vector<bool> marks);
  bool IsMarked(int row) const;
  bool IsCut(int row) const;
  std::vector<std::string> Texts() const;
  QPoint PlaceOfSelected() const;  // in viewport coordinates
  void SetEmptyText(const QString& text);
  void Repaint();
  QString emptyText;
  std::function<std::string(int position)> onToolTip;
  std::function<void(int from, int to)> onMove;

 protected:
  bool event(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;
  void paintEvent(QPaintEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  struct Dragged {
    int row;
    int gap;  // drop position: above the entry of this row
  };

  bool TakeFindKey(const QKeyEvent& event);
  void Find(FindStep step);
  void EndFinding();
  void DragTo(int y);
  void StopDragging();

  std::vector<bool> marks_;
  int place_ = 0;  // the row from which an arrow key continues while no entry is current
  QString typed_;
  QLabel* findBox_;
  QBasicTimer findEnd_;
  QPoint pressed_;
  std::optional<Dragged> dragged_;
  QBasicTimer scrolling_;
};

struct NativeTextBox : QLineEdit {
  explicit NativeTextBox(QWidget* parent);
};

// Cuts the text to the lines that fit on the screen; the last line then says how many are missing.
QString LinesOnScreen(const QString& text);

// As plain text, never markup.
QString ToToolTip(const QString& text);

void MarkFocus(QWidget& widget);

// Rejects characters that the code page lacks; says so in a tooltip below the box and in its accessible description.
void KeepToCodePage(QLineEdit& box);

struct NativeWindow : QWidget {
  explicit NativeWindow(const WindowLayout& layout);
  ~NativeWindow() override;
  NativeWindow(const NativeWindow&) = delete;
  NativeWindow& operator=(const NativeWindow&) = delete;

  void Open();
  void OpenInFrontOf(NativeWindow& other);
  void CloseByItself();
  void Enable();

  struct Command {
    const CommandLayout* layout;
    QKeyCombination key;
    NativeButton* button;
    QWidget* control;
    std::function<void()> handler = {};
    std::function<bool()> isAvailable = {};

    bool IsFor(const QWidget* focus) const { return control == nullptr || control == focus; }
    bool CanRun() const;
    void Run() const;
  };
  const std::vector<Command>& Commands() const { return commands_; }
  std::vector<Command*> FindCommands(std::string_view caption);  // stops the program if there is none

  // Runs the command for the key and the focused control. False if there is none.
  bool TakeKey(const QKeyEvent& event);

  // `place` is in screen coordinates.
  void ShowMenu(const QWidget& control, const QPoint& place);
  void ShowDetails();

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
  void SetOpen(bool isOpen);
  void PlaceAmongOthers();
  void BringWhatIsInFront();
  void TakeDesktopsSize();
  void AddControl(const ControlLayout& control);
  void ConnectControl(const ControlLayout& control) const;
  void AddCommand(const CommandLayout& layout);
  void SetTabOrder();

  const WindowLayout& layout_;
  std::vector<Command> commands_;
  QPushButton* defaultButton_ = nullptr;
  QPushButton* cancelButton_ = nullptr;
  QPointer<NativeWindow> inFront_;
  bool isOpen_ = false;
  bool closesByItself_ = false;
};

}  // namespace platform
