// HTML to plain characters, against libraries and programs that do the same. Each gets the document in the
// form that it takes: ours and the toolkit's UTF-16, libraries UTF-8 in memory, programs a file of UTF-8.
#include "bench/table/Mail.h"
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "platform/Literals.h"
#include "platform/services/html/HtmlImporter.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextDocument>
#include <gumbo.h>
#include <libxml/HTMLparser.h>

namespace bench {

namespace {

struct Document {
    QString what;
    QString html;
    QByteArray bytes;
};

void collectText(const xmlNode *node, std::string &text) {
    while (node) {
        if (node->type == XML_TEXT_NODE)
            text += reinterpret_cast<const char *>(node->content);
        if (node->children) {
            node = node->children;
            continue;
        }
        while (node && !node->next)
            node = node->parent;
        if (node)
            node = node->next;
    }
}

bool withLibxml2(const QByteArray &bytes) {
    htmlDocPtr document = htmlReadMemory(bytes.constData(), int(bytes.size()), nullptr, "UTF-8",
                                         HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET);
    std::string text;
    collectText(xmlDocGetRootElement(document), text);
    xmlFreeDoc(document);
    keep(text);
    return !text.empty();
}

void collectText(const GumboNode *node, std::string &text) {
    // The depth of a tree may be greater than a stack's.
    std::vector<const GumboNode *> pending{node};
    while (!pending.empty()) {
        const GumboNode *next = pending.back();
        pending.pop_back();
        if (next->type == GUMBO_NODE_TEXT || next->type == GUMBO_NODE_WHITESPACE)
            text += next->v.text.text;
        if (next->type != GUMBO_NODE_ELEMENT)
            continue;
        const GumboVector &children = next->v.element.children;
        for (unsigned i = children.length; i > 0; --i)
            pending.push_back(static_cast<const GumboNode *>(children.data[i - 1]));
    }
}

bool withGumbo(const QByteArray &bytes) {
    GumboOutput *output =
        gumbo_parse_with_options(&kGumboDefaultOptions, bytes.constData(), std::size_t(bytes.size()));
    std::string text;
    collectText(output->root, text);
    gumbo_destroy_output(&kGumboDefaultOptions, output);
    keep(text);
    return !text.empty();
}

bool withToolkit(const QString &html) {
    QTextDocument document;
    document.setHtml(html);
    return !document.toPlainText().isEmpty();
}

struct Program {
    QString name;
    QStringList arguments;
};
const Program programs[] = {
    {u"lynx"_s, {"-dump", "-nolist", "-force_html", "-assume_charset=utf-8"}},
    {u"w3m"_s, {"-dump", "-T", "text/html"}},
};
constexpr int patience = 20'000; // milliseconds

// False when it takes longer than one waits.
bool withProgram(const Program &program, const QString &file) {
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program.name, program.arguments + QStringList{file});
    if (process.waitForFinished(patience))
        return true;
    process.kill();
    process.waitForFinished();
    return false;
}

void compare(const Document &document, const QString &other, const Work &work) {
    const auto ours = [&] { keep(platform::plainTextOfHtml(document.html)); };
    const Comparison times = sideBySide({repeating(ours), work}, {.seconds = 1});
    addRatio(document.what, times.seconds[0], other, times.seconds[1], times.ratios[1], 1.0);
}

void comparePrograms(const Document &document) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"mail.html"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(document.bytes) != document.bytes.size())
        qFatal("the file cannot be written");
    file.close();
    for (const Program &program : programs) {
        if (QStandardPaths::findExecutable(program.name).isEmpty())
            continue;
        const QString name = program.name + u" -dump"_s;
        QElapsedTimer timer;
        timer.start();
        if (withProgram(program, file.fileName()) && timer.elapsed() < patience / 2)
            compare(document, name, repeating([&] { withProgram(program, file.fileName()); }));
        else
            addRow(document.what, QString(), name + u": over "_s + timeText(double(timer.elapsed()) / 1e3),
                   QString(), u"ahead"_s, true);
    }
}

// One that loses the text of the document has done less work: then there is nothing to compare.
template<typename Convert>
void compareLibrary(const Document &document, const QString &name, Convert convert) {
    if (convert())
        compare(document, name, repeating(convert));
    else
        addRow(document.what, QString(), name + u": loses the text"_s, QString(), u"ahead"_s, true);
}

void compareAll(const Document &document) {
    compareLibrary(document, u"libxml2's tree"_s, [&] { return withLibxml2(document.bytes); });
    compareLibrary(document, u"gumbo"_s, [&] { return withGumbo(document.bytes); });
    compareLibrary(document, u"Qt's importer"_s, [&] { return withToolkit(document.html); });
    comparePrograms(document);
}

Document mail(qsizetype bytes) {
    const QString html = mailOf(bytes);
    return {u"HTML to characters, "_s + sizeText(double(bytes)), html, html.toUtf8()};
}

Work convert(const Document &document) {
    return repeating([html = document.html] { keep(platform::plainTextOfHtml(html)); });
}

void compareWithAims() {
    constexpr double aim = 100; // megabytes a second
    const Document usual = mail(1'000'000);
    for (const qsizetype bytes : {10'000, 1'000'000, 20'000'000}) {
        const Document document = mail(bytes);
        const Comparison times = sideBySide({convert(document), convert(usual)}, {.seconds = 1.5});
        const double speed = double(document.bytes.size()) / 1e6 / times.seconds[0];
        addRow(document.what, u"%1 MB/s"_s.arg(qRound(speed)), u"100 MB/s"_s, ratioText(speed / aim),
               u"at least 1"_s, speed >= aim);
        if (bytes > 1'000'000)
            addLinear(u"the same, each KB of 20 MB"_s, times.seconds[0] * 1e3 / double(document.bytes.size()),
                      u"of 1 MB"_s, times.seconds[1] * 1e3 / double(usual.bytes.size()),
                      times.ratios[1] * double(usual.bytes.size()) / double(document.bytes.size()));
    }
}

void compareNesting() {
    constexpr int depth = 20'000;
    const Document less{QString(), nestedElements(depth), QByteArray()};
    const Document more{QString(), nestedElements(10 * depth), QByteArray()};
    const Comparison times = sideBySide({convert(more), convert(less)}, {.seconds = 1.5});
    addLinear(u"200,000 nested elements, each"_s, times.seconds[0] / (10 * depth), u"of 20,000"_s,
              times.seconds[1] / depth, times.ratios[1] / 10);
    const QString html = nestedElements(depth);
    compareAll({u"20,000 nested elements"_s, html, html.toUtf8()});
}

} // namespace

void html() {
    for (const Program &program : programs)
        if (QStandardPaths::findExecutable(program.name).isEmpty())
            addNote(program.name + u" is not installed and is left out."_s);
    compareWithAims();
    for (const qsizetype bytes : {10'000, 1'000'000, 20'000'000})
        compareAll(mail(bytes));
    compareNesting();
}

} // namespace bench
