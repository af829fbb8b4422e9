#pragma once

#include <QApplication>
#include <QEvent>
#include <QMetaObject>
#include <QObject>
#include <QWidget>
#include <cstdlib>
#include <unistd.h>

// Ends the program after its first window is painted.
class EndAtFirstPaint : public QObject {
 public:
  EndAtFirstPaint() { qApp->installEventFilter(this); }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    const auto* const widget = qobject_cast<QWidget*>(receiver);
    const bool isPainted = event->type() == QEvent::Paint && widget != nullptr && widget->isWindow();
    // Controls are painted in the same event as their window.
    const auto end = [] { _exit(EXIT_SUCCESS); };
    if (isPainted) QMetaObject::invokeMethod(qApp, end, Qt::QueuedConnection);
    return false;
  }
};
