// HTML of mails and appointments: to plain characters, and as the document of a web view.
#include "platform/Literals.h"
#include "platform/services/html/HtmlImporter.h"
#include "platform/toolkit/CdataSections.h"
#include "platform/toolkit/HtmlNesting.h"
#include "platform/toolkit/WebDocument.h"
#include "platform/toolkit/WebNode.h"
#include "tests/fuzz/FuzzTarget.h"

#include <algorithm>

using namespace fuzz;

namespace {

const QString bodyTag = u"body"_s;

bool isPlainWords(const QString &text) {
    return std::all_of(text.cbegin(), text.cend(), [](QChar unit) {
        return unit >= u' ' && unit < u'\x7f' && unit != u'<' && unit != u'&';
    });
}

void claimPlainText(const QString &html) {
    static const auto importer = platform::makeHtmlImporter();
    const QString text = importer->plainText(html);
    claim(!text.isNull(), "there is always a text");
    claim(text.size() <= 8 * html.size() + 16, "the text is no larger than the HTML makes it");
    if (isPlainWords(html))
        claimSame(text.simplified(), html.simplified(), "words without markup stay");
}

int depthOf(const platform::WebNode &root) {
    std::vector<std::pair<const platform::WebNode *, int>> pending{{&root, 0}};
    int deepest = 0;
    while (!pending.empty()) {
        const auto [node, depth] = pending.back();
        pending.pop_back();
        deepest = std::max(deepest, depth);
        for (const auto &child : node->children)
            pending.emplace_back(child.get(), depth + 1);
    }
    return deepest;
}

void claimNesting(const std::string &html) {
    constexpr int limit = 8;
    const std::string limited = platform::withNestingLimited(html, limit);
    claim(limited.size() <= html.size(), "limiting the nesting adds nothing");
    const int tags = int(std::count(html.begin(), html.end(), '<'));
    claim(platform::withNestingLimited(html, tags + 1) == html, "what does not nest too deep is left alone");
    const int depth = depthOf(*platform::parseDocument(limited));
    claim(depth <= 12 * limit + 32, "the parsed tree is a few times as deep at most");
}

void claimDocument(const QString &html) {
    platform::WebDocument document(html);
    const QString text = document.toHtml();
    claim(document.hasElement(u"html"_s), "every document has its element");
    claim(text.endsWith(document.documentElementOuterHtml()) || text.contains(u"<!--"),
          "the document ends with its element");
    const bool hasBody = document.hasElement(bodyTag);
    claim(document.innerHtml(bodyTag).isNull() != hasBody, "an element has a content");
    claim(document.setInnerHtml(bodyTag, html) == hasBody, "an element's content can be set");
    if (hasBody) {
        claim(document.setInnerHtml(bodyTag, u"x<p>y</p>"_s), "and set again");
        claimSame(document.innerHtml(bodyTag), u"x<p>y</p>"_s, "to what it is then");
    }
    const std::string utf8 = html.toStdString();
    const std::string without = platform::withoutCdataSections(utf8);
    claim(without.size() <= 5 * utf8.size(), "sections grow by their escapes at most");
}

void open(const QByteArray &bytes) {
    const QString html = QString::fromUtf8(bytes);
    claimPlainText(html);
    claimDocument(html);
    claimNesting(platform::withoutCdataSections(html.toStdString()));
}

const AddFuzzTarget target("html", open);

} // namespace
