#include "platform/dialogs.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QByteArray>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QUrl>
#include <QUtf8StringView>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/file_dialog.h"
#include "platform/paths.h"
#include "platform/qt/native.h"
#include "platform/qt/run.h"
#include "platform/qt/text.h"

namespace platform {
namespace {

QMessageBox::Icon BoxIcon(Icon icon) {
  switch (icon) {
    case Icon::Information:
      return QMessageBox::Information;
    case Icon::Exclamation:
      return QMessageBox::Warning;
    case Icon::Critical:
      return QMessageBox::Critical;
    case Icon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// The dialog shows only the texts.
QStringList NameFilters(std::span<const FileFilter> filters) {
  QStringList list;
  for (const FileFilter& filter : filters) {
    const std::string_view pattern = filter.pattern == "*.*" ? "*" : filter.pattern;  // names without a dot, too
    list << ToQt(filter.text) + " (" + ToQt(pattern) + ")";
  }
  return list;
}

// Via UTF-8: Qt's conversion to it never fails.
std::filesystem::path FromQtPath(const QString& path) {
  const QByteArray text = path.toUtf8();
  return std::filesystem::path(std::u8string(text.begin(), text.end())).make_preferred();
}

// Nothing for paths that Qt cannot represent: on Linux, names that are not UTF-8.
std::optional<QString> ToQtPath(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  if (!QUtf8StringView(text).isValidUtf8()) return std::nullopt;
  return QString::fromUtf8(text.c_str());
}

// The first that is a folder; empty if none is.
QString FirstFolder(const std::vector<std::filesystem::path>& folders) {
  for (const std::filesystem::path& folder : folders) {
    const auto path = ToQtPath(folder);
    if (path && QFileInfo(*path).isDir()) return *path;
  }
  return "";
}

// Accepts a typed file name in any letter case, as the game does.
struct FileDialog : QFileDialog {
  using QFileDialog::QFileDialog;

 protected:
  void accept() override {
    auto* const box = findChild<QLineEdit*>();  // none in the system's own dialog
    const QStringList chosen = selectedFiles();
    if (box != nullptr && chosen.size() == 1 && !QFileInfo::exists(chosen.front())) {
      const auto onDisk = ToQtPath(AsSpelledOnDisk(FromQtPath(chosen.front())));
      if (onDisk && QFileInfo::exists(*onDisk)) box->setText(*onDisk);
    }
    QFileDialog::accept();
  }
};

// Paints side-bar entries with their accessible names, elided to fit.
struct PlaceNames : QStyledItemDelegate {
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return {0, QStyledItemDelegate::sizeHint(option, index).height()};
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = index.data(Qt::AccessibleTextRole).toString();
    option->textElideMode = Qt::ElideMiddle;
  }
};

// Shows paths instead of names: many places are called drive_c.
void NamePlaces(QListView& sideBar, const QList<QUrl>& places) {
  const QString home = QDir::homePath();
  for (int row = 0; row < places.size(); ++row) {
    const QString path = places[row].toLocalFile();
    const bool isInHome = path == home || path.startsWith(home + "/");
    const QString name = isInHome ? "~" + path.mid(home.size()) : path;
    sideBar.model()->setData(sideBar.model()->index(row, 0), name, Qt::AccessibleTextRole);
  }
  sideBar.setItemDelegate(new PlaceNames(&sideBar));
}

// Uses Qt's dialog: the system's own cannot add these places or show hidden folders, such as Steam's.
void OfferPlaces(QFileDialog& dialog, const std::vector<std::filesystem::path>& places) {
  if (places.empty()) return;
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setFilter(dialog.filter() | QDir::Hidden);
  QList<QUrl> urls;
  for (const std::filesystem::path& place : places) {
    if (const auto path = ToQtPath(place)) urls << QUrl::fromLocalFile(*path);
  }
  dialog.setSidebarUrls(urls);
  if (auto* const sideBar = dialog.findChild<QListView*>("sidebar")) {
    constexpr int kWidth = 300;
    NamePlaces(*sideBar, dialog.sidebarUrls());
    sideBar->setMinimumWidth(kWidth);
    dialog.resize(dialog.sizeHint() + QSize(kWidth, 0));
  }
}

// Disables renaming, moving, deleting and creating files, and dragging them out.
void MakeReadOnly(QFileDialog& dialog) {
  dialog.setOption(QFileDialog::ReadOnly);
  for (auto* const view : dialog.findChildren<QAbstractItemView*>())
    view->setDragDropMode(QAbstractItemView::NoDragDrop);
}

struct LeaveNoTraces {
  void operator()(QFileDialog* dialog) const {
    WithoutTraces([&] { delete dialog; });
  }
};

}  // namespace

Answer MsgBox(std::string_view text, Buttons buttons, Icon icon, std::string_view title) {
  DropPendingInput();  // not meant as an answer
  QMessageBox box(QApplication::activeWindow());
  box.setWindowModality(Qt::ApplicationModal);
  box.setWindowTitle(ToQt(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(LinesOnScreen(ToQt(text)));
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  box.setIcon(BoxIcon(icon));
  const bool isQuestion = buttons == Buttons::YesNo;
  const QPushButton* const first = box.addButton(isQuestion ? QMessageBox::Yes : QMessageBox::Ok);
  if (buttons != Buttons::Ok) box.setEscapeButton(box.addButton(isQuestion ? QMessageBox::No : QMessageBox::Cancel));
  box.setDefaultButton(isQuestion ? QMessageBox::Yes : QMessageBox::Ok);
  box.exec();
  const bool isFirst = buttons == Buttons::Ok || box.clickedButton() == first;
  if (isQuestion) return isFirst ? Answer::Yes : Answer::No;
  return isFirst ? Answer::Ok : Answer::Cancel;
}

std::string InputBox(std::string_view prompt, std::string_view title, std::string_view defaultText) {
  QInputDialog dialog(QApplication::activeWindow());
  dialog.setWindowModality(Qt::ApplicationModal);
  dialog.setInputMode(QInputDialog::TextInput);
  dialog.setWindowTitle(ToQt(title));
  dialog.setTextValue(ToQt(defaultText));
  dialog.setLabelText(ToQt(prompt));
  if (auto* const label = dialog.findChild<QLabel*>()) label->setTextFormat(Qt::PlainText);
  if (auto* const box = dialog.findChild<QLineEdit*>()) KeepToCodePage(*box);
  return dialog.exec() == QDialog::Accepted ? FromQt(dialog.textValue()) : std::string();
}

std::optional<ChosenFile> ShowOpen(const OpenFileDialog& settings) {
  const auto given = ToHostPath(settings.folder);
  QString folder = given ? FirstFolder({AsSpelledOnDisk(*given)}) : "";
  if (folder.isEmpty()) folder = FirstFolder(StartFolders(settings.fileName));
  for (;;) {
    std::unique_ptr<QFileDialog, LeaveNoTraces> dialog;
    WithoutTraces([&] { dialog.reset(new FileDialog(QApplication::activeWindow(), ToQt(settings.title))); });
    OfferPlaces(*dialog, GamePlaces());
    dialog->setWindowModality(Qt::ApplicationModal);
    MakeReadOnly(*dialog);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setNameFilters(NameFilters(settings.filters));
    dialog->setDefaultSuffix(ToQt(settings.defaultExtension));
    if (!folder.isEmpty()) dialog->setDirectory(folder);
    const QString offered = dialog->directory().filePath(ToQt(settings.fileName));
    dialog->selectFile(QFileInfo(ToQtPath(AsSpelledOnDisk(FromQtPath(offered))).value_or(offered)).fileName());
    if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty()) return std::nullopt;

    const std::filesystem::path chosen = FromQtPath(dialog->selectedFiles().front());
    auto path = ToWindowsPath(chosen);
    const std::size_t folderLength = path ? path->rfind('\\') + 1 : 0;
    if (path && folderLength <= settings.longestFolder) {
      std::string name = path->substr(folderLength);
      return ChosenFile{*std::move(path), std::move(name)};
    }
    const std::string reason =
        path ? "Its folder's path is longer than " + std::to_string(settings.longestFolder) + " characters."
             : "It is on none of the game's drives, or its path has characters that the game's files do not support.";
    MsgBox(DisplayName(chosen) + " cannot be used: " + reason, Buttons::Ok, Icon::Exclamation, settings.title);
  }
}

bool OpenFolder(std::string_view windowsPath) {
  const auto path = ToHostPath(windowsPath);
  const QString folder = path ? FirstFolder({AsSpelledOnDisk(*path)}) : "";
  return !folder.isEmpty() && QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

void CopyText(std::string_view text) { QGuiApplication::clipboard()->setText(ToQt(text)); }

}  // namespace platform
