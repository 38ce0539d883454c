#include "lib_base/translateqt.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <cstring>

std::size_t krpreQtTranslate(const char* text, char* buffer, std::size_t size) noexcept {
  try {
    if (!QCoreApplication::instance()) return 0;
    const QByteArray bytes = QCoreApplication::translate("Preprocessor", text).toLocal8Bit();
    const auto length = static_cast<std::size_t>(bytes.size());
    if (length <= size) std::memcpy(buffer, bytes.constData(), length);
    return length;
  } catch (...) {  // out of memory, or a host translator that throws
    return 0;
  }
}
