// HTML of mails and appointments: to plain characters, and as the document of a web view.
#include "platform/Literals.h"
#include "platform/services/html/HtmlImporter.h"
#include "platform/toolkit/GumboSerialiser.h"
#include "platform/toolkit/HtmlGuard.h"
#include "platform/toolkit/WebDocument.h"
#include "tests/fuzz/FuzzTarget.h"

#include <algorithm>

using namespace fuzz;

namespace {

bool isPlainWords(const QString &text) {
    return std::all_of(text.cbegin(), text.cend(), [](QChar unit) {
        return unit >= u' ' && unit < u'\x7f' && unit != u'<' && unit != u'&';
    });
}

void claimPlainText(const QString &html) {
    const QString text = platform::plainTextOfHtml(html);
    claim(!text.isNull(), "there is always a text");
    claim(text.size() <= 8 * html.size() + 16, "the size of the text is in proportion to the HTML");
    if (isPlainWords(html))
        claimSame(text.simplified(), html.simplified(), "plain words stay");
}

int depthOf(const std::string &html) {
    GumboOutput *parsed = gumbo_parse(html.c_str());
    std::vector<std::pair<const GumboNode *, int>> pending{{parsed->document, 0}};
    int deepest = 0;
    while (!pending.empty()) {
        const auto [node, depth] = pending.back();
        pending.pop_back();
        deepest = std::max(deepest, depth);
        const GumboVector *children = platform::childrenOf(*node);
        for (unsigned i = 0; children && i < children->length; ++i)
            pending.emplace_back(static_cast<const GumboNode *>(children->data[i]), depth + 1);
    }
    gumbo_destroy_output(&kGumboDefaultOptions, parsed);
    return deepest;
}

void claimNesting(const std::string &html) {
    constexpr int limit = 8;
    const std::string limited = platform::guardedHtml(html, limit);
    claim(limited.size() <= 5 * html.size(), "the guard adds nothing except the escapes of sections");
    const int depth = depthOf(limited);
    claim(depth <= 12 * limit + 32, "the parsed tree is at most a few times deeper");
}

void claimDocument(const QString &html) {
    const platform::WebDocument document(html);
    claim(document.documentElementOuterHtml().startsWith(u"<html"), "a document has its element");
    const bool hasBody = !document.bodyHtml().isNull();
    claim(document.withBodyHtml(html).isNull() != hasBody, "a body can be replaced");
    const QString changed = document.withBodyHtml(u"x<p>y</p>"_s);
    claim(!hasBody || changed.contains(u"x<p>y</p></body>"_s), "by what it is then");
}

void open(const QByteArray &bytes) {
    const QString html = QString::fromUtf8(bytes);
    claimPlainText(html);
    claimDocument(html);
    claimNesting(html.toStdString());
}

const AddFuzzTarget target("html", open);

} // namespace
