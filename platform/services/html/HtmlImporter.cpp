#include "platform/services/html/HtmlImporter.h"

#include "platform/Literals.h"
#include "platform/services/html/HtmlReader.h"

#include <QStringEncoder>
#include <string>

namespace platform {

namespace {

// UTF-8 in which a lone surrogate is U+FFFD, without NULs.
std::string cleanUtf8(const QString &text) {
    QStringEncoder encoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    std::string bytes(std::size_t(encoder.requiredSpace(text.size())), '\0');
    const char *end = encoder.appendToBuffer(bytes.data(), text);
    bytes.resize(std::size_t(end - bytes.data()));
    std::erase(bytes, '\0');
    return bytes;
}

} // namespace

QString plainTextOfHtml(const QString &html) {
    if (html.isEmpty())
        return u""_s;
    const std::string bytes = cleanUtf8(html);
    HtmlTextSink sink;
    sink.reserve(bytes.size());
    HtmlReader(sink).read(bytes);
    const std::string text = sink.take();
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace platform
