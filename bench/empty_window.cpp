// The smallest program with a Qt window; with an argument, the smallest that shows text.

#include <QLabel>
#include <memory>

#include "bench/first_paint.h"

int main(int argumentCount, char** arguments) {
  const QApplication application(argumentCount, arguments);
  const EndAtFirstPaint end;
  QWidget window;
  window.resize(400, 300);
  std::unique_ptr<QLabel> label;
  if (argumentCount > 1) label = std::make_unique<QLabel>(arguments[1], &window);
  window.show();
  return QApplication::exec();
}
