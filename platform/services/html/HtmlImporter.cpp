#include "platform/services/html/HtmlImporter.h"

#include "platform/Literals.h"
#include "platform/services/html/HtmlReader.h"

#include <QByteArray>
#include <QStringEncoder>
#include <string>

namespace platform {

namespace {

// UTF-8 with U+FFFD for lone surrogates and without NULs.
QByteArray cleanUtf8(const QString &text) {
    QStringEncoder encoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    // Up to three times the need, but memory that is never written costs nothing.
    QByteArray bytes(encoder.requiredSpace(text.size()), Qt::Uninitialized);
    bytes.truncate(encoder.appendToBuffer(bytes.data(), text) - bytes.data());
    if (bytes.contains('\0'))
        bytes.removeIf([](char byte) { return byte == '\0'; });
    return bytes;
}

} // namespace

QString plainTextOfHtml(const QString &html) {
    if (html.isEmpty())
        return u""_s;
    const QByteArray bytes = cleanUtf8(html);
    HtmlTextSink sink;
    sink.reserve(std::size_t(bytes.size()));
    HtmlReader(sink).read({bytes.constData(), std::size_t(bytes.size())});
    const std::string text = sink.take();
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace platform
