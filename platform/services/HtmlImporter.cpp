#include "platform/services/HtmlImporter.h"

#include "platform/services/HtmlTextSink.h"

#include <QStringEncoder>
#include <algorithm>
#include <cstring>
#include <libxml/HTMLparser.h>
#include <strings.h>

namespace platform {

namespace {

// Deeper than this, an element is flattened: the parser searches its whole stack for each end tag that
// nothing opened, so that its time is the input's length times the depth.
constexpr int maxNesting = 512;
constexpr std::size_t chunkSize = 256 * 1024;

struct Parse {
    HtmlTextSink sink;
    htmlParserCtxt *context = nullptr;
};

// Makes the parser forget the element that it has just opened.
void forgetOpenElement(htmlParserCtxt *context) {
    --context->nameNr;
    context->name = context->nameNr > 0 ? context->nameTab[context->nameNr - 1] : nullptr;
}

void startElement(void *data, const xmlChar *name, const xmlChar **attributes) {
    auto *parse = static_cast<Parse *>(data);
    const HtmlTag tag = HtmlTag::named(reinterpret_cast<const char *>(name));
    if (parse->context->nameNr > maxNesting && tag.canBeFlattened()) {
        parse->sink.openFlattened(tag);
        forgetOpenElement(parse->context);
        return;
    }
    parse->sink.open(tag, reinterpret_cast<const char *const *>(attributes));
}

void endElement(void *data, const xmlChar *) {
    static_cast<Parse *>(data)->sink.close();
}

void characters(void *data, const xmlChar *text, int length) {
    static_cast<Parse *>(data)->sink.text({reinterpret_cast<const char *>(text), std::size_t(length)});
}

htmlSAXHandler handlers() {
    htmlSAXHandler sax{};
    sax.startElement = startElement;
    sax.endElement = endElement;
    sax.characters = characters;
    sax.ignorableWhitespace = characters;
    sax.cdataBlock = characters;
    return sax;
}

// UTF-8 in which a lone surrogate is U+FFFD. One bad byte would make the parser read the rest as Latin-1.
std::string cleanUtf8(const QString &text) {
    QStringEncoder encoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    std::string bytes(std::size_t(encoder.requiredSpace(text.size())), '\0');
    const char *end = encoder.appendToBuffer(bytes.data(), text);
    bytes.resize(std::size_t(end - bytes.data()));
    // A NUL ends the parse.
    std::erase(bytes, '\0');
    return bytes;
}

bool startsWith(std::string_view text, std::string_view lowerCase) {
    return text.size() >= lowerCase.size() &&
           strncasecmp(text.data(), lowerCase.data(), lowerCase.size()) == 0;
}

// How much of the text, which begins with '<', is markup that a browser ignores and the parser does not:
// declarations such as <![if !mso]>, which it takes for text, and the end of html or body, after which it
// stops or opens paragraphs of its own. 0: nothing.
std::size_t ignoredMarkup(std::string_view markup) {
    const bool declaration = markup.size() > 1 && markup[1] == '!' && !startsWith(markup, "<!--") &&
                             !startsWith(markup, "<!doctype");
    if (!declaration && !startsWith(markup, "</body") && !startsWith(markup, "</html"))
        return 0;
    // Not beyond the next tag: a script may hold the beginning of one without its end.
    const std::size_t end = markup.find_first_of("<>", 1);
    return end == std::string_view::npos || markup[end] == '<' ? 0 : end + 1;
}

std::size_t commentLength(std::string_view markup) {
    if (!startsWith(markup, "<!--"))
        return 0;
    // "<!-->" is a whole comment.
    const std::size_t end = markup.find("-->", 2);
    return end == std::string_view::npos ? markup.size() : end + 3;
}

std::string withoutIgnoredMarkup(const std::string &html) {
    std::string kept;
    kept.reserve(html.size() + 4);
    const std::string_view all = html;
    std::size_t copied = 0;
    std::size_t at = all.find('<');
    while (at != std::string_view::npos) {
        const std::string_view markup = all.substr(at);
        std::size_t next = at + std::max<std::size_t>(commentLength(markup), 1);
        if (const std::size_t ignored = ignoredMarkup(markup)) {
            kept.append(all, copied, at - copied);
            next = copied = at + ignored;
        }
        at = all.find('<', next);
    }
    kept.append(all, copied);
    // The parser drops a '<' that ends the text.
    if (!kept.empty() && kept.back() == '<')
        kept.replace(kept.size() - 1, 1, "&lt;");
    return kept;
}

class Libxml2Importer final : public HtmlImporter {
public:
    [[nodiscard]] QString plainText(const QString &html) const override;
};

void feed(htmlParserCtxt *context, const std::string &html) {
    // Else bare text would begin a paragraph.
    constexpr std::string_view prologue = "<html><body>";
    htmlParseChunk(context, prologue.data(), int(prologue.size()), 0);
    for (std::size_t at = 0; at < html.size(); at += chunkSize)
        htmlParseChunk(context, html.data() + at, int(std::min(chunkSize, html.size() - at)), 0);
    htmlParseChunk(context, nullptr, 0, 1);
}

QString Libxml2Importer::plainText(const QString &html) const {
    if (html.isEmpty())
        return QStringLiteral("");
    const std::string bytes = withoutIgnoredMarkup(cleanUtf8(html));
    Parse parse;
    parse.sink.reserve(bytes.size());
    htmlSAXHandler sax = handlers();
    parse.context = htmlCreatePushParserCtxt(&sax, &parse, nullptr, 0, nullptr, XML_CHAR_ENCODING_UTF8);
    if (!parse.context)
        return QStringLiteral("");
    htmlCtxtUseOptions(parse.context, HTML_PARSE_IGNORE_ENC | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                                          HTML_PARSE_NONET | HTML_PARSE_RECOVER);
    feed(parse.context, bytes);
    if (parse.context->myDoc)
        xmlFreeDoc(parse.context->myDoc);
    htmlFreeParserCtxt(parse.context);
    const std::string text = parse.sink.take();
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace

std::unique_ptr<HtmlImporter> makeHtmlImporter() {
    return std::make_unique<Libxml2Importer>();
}

} // namespace platform
