#include "platform/toolkit/WebDocument.h"

#include "platform/toolkit/CdataSections.h"
#include "platform/toolkit/HtmlNesting.h"
#include "platform/toolkit/WebNode.h"

namespace platform {

namespace {

constexpr int maxNesting = 2000;

std::string cleanHtml(const QString &html) {
    const QByteArray bytes = html.toUtf8();
    return withNestingLimited(withoutCdataSections({bytes.constData(), std::size_t(bytes.size())}),
                              maxNesting);
}

QString text(const std::string &utf8) {
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

} // namespace

WebDocument::WebDocument()
    : WebDocument(QString()) {}
WebDocument::WebDocument(const QString &html)
    : m_root(parseDocument(cleanHtml(html))) {}
WebDocument::~WebDocument() = default;
WebDocument::WebDocument(WebDocument &&) noexcept = default;
WebDocument &WebDocument::operator=(WebDocument &&) noexcept = default;

QString WebDocument::documentElementOuterHtml() const {
    const WebNode *element = firstElement(m_root.get(), "html");
    return element ? text(outerHtmlOf(*element)) : QString();
}

QString WebDocument::toHtml() const {
    return m_root ? text(innerHtmlOf(*m_root)) : QString();
}

bool WebDocument::hasElement(const QString &tagName) const {
    return firstElement(m_root.get(), tagName.toUtf8().toStdString()) != nullptr;
}

QString WebDocument::innerHtml(const QString &tagName) const {
    const WebNode *element = firstElement(m_root.get(), tagName.toUtf8().toStdString());
    return element ? text(innerHtmlOf(*element)) : QString();
}

bool WebDocument::setInnerHtml(const QString &tagName, const QString &html) {
    WebNode *element = firstElement(m_root.get(), tagName.toUtf8().toStdString());
    if (!element)
        return false;
    element->children = parseFragment(cleanHtml(html), *element);
    return true;
}

} // namespace platform
