#include "standin/walkthrough/ResultPage.h"

#include "platform/Literals.h"
#include "platform/services/storage/WholeFile.h"

#include <QDir>
#include <algorithm>

namespace walkthrough {

namespace {

const QString head = uR"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Walk-through</title>
<style>
:root { color-scheme: light dark; }
body { font: 15px/1.5 sans-serif; margin: 2em; }
table { border-collapse: collapse; width: 100%; table-layout: fixed; }
th, td { border-top: 1px solid #8886; padding: .6em; text-align: left; vertical-align: top; }
th:first-child { width: 18%; }
thead th { position: sticky; top: 0; background: Canvas; }
img { max-width: 100%; border: 1px solid #8886; margin-top: .5em; }
code { display: block; font-size: .85em; word-break: break-all; opacity: .8; }
.failed { color: #c0392b; font-weight: bold; }
</style>
</head>
<body>
<h1>Walk-through</h1>
)"_s;

// A step, with its index in each walk that has it.
struct Row {
    QString text;
    QList<const StepResult *> results;
};

// A step of only one walk comes after the step that it follows there.
QList<Row> rowsOf(const QList<GenerationResult> &walks) {
    QList<Row> rows;
    for (qsizetype walk = 0; walk < walks.size(); ++walk) {
        qsizetype place = 0;
        for (const StepResult &step : walks[walk].steps) {
            const auto same = std::find_if(rows.cbegin() + place, rows.cend(),
                                           [&step](const Row &row) { return row.text == step.text; });
            place = same == rows.cend() ? place : same - rows.cbegin();
            if (same == rows.cend())
                rows.insert(place, {step.text, QList<const StepResult *>(walks.size())});
            rows[place++].results[walk] = &step;
        }
    }
    return rows;
}

QString cell(const StepResult *step, const QString &hostVersion) {
    if (!step)
        return u"<td>not a step of this host</td>\n"_s;
    QString html = step->ok ? u"<td>passed\n"_s : u"<td><span class=\"failed\">failed</span>\n"_s;
    for (const QString &message : step->messages)
        html += u"<code>%1</code>\n"_s.arg(message.toHtmlEscaped());
    for (const QString &picture : step->pictures) {
        const QString path = u"host-%1/%2"_s.arg(hostVersion, picture).toHtmlEscaped();
        html += u"<a href=\"%1\"><img src=\"%1\" alt=\"%1\" loading=\"lazy\"></a>\n"_s.arg(path);
    }
    return html + u"</td>\n"_s;
}

} // namespace

qsizetype failedSteps(const QList<GenerationResult> &walks) {
    qsizetype failed = 0;
    for (const GenerationResult &walk : walks)
        failed += std::count_if(walk.steps.begin(), walk.steps.end(),
                                [](const StepResult &step) { return !step.ok; });
    return failed;
}

bool writeResultPage(const QString &folder, const QList<GenerationResult> &walks) {
    qsizetype all = 0;
    QString heads;
    for (const GenerationResult &walk : walks) {
        all += walk.steps.size();
        heads += u"<th>Host %1</th>"_s.arg(walk.hostVersion.toHtmlEscaped());
    }
    QString html = head;
    html += u"<p>%1 of %2 steps passed.</p>\n<table>\n<thead><tr><th>Step</th>%3</tr></thead>\n<tbody>\n"_s
                .arg(all - failedSteps(walks))
                .arg(all)
                .arg(heads);
    for (const Row &row : rowsOf(walks)) {
        html += u"<tr><td>%1</td>\n"_s.arg(row.text.toHtmlEscaped());
        for (qsizetype walk = 0; walk < walks.size(); ++walk)
            html += cell(row.results[walk], walks[walk].hostVersion);
        html += u"</tr>\n"_s;
    }
    html += u"</tbody>\n</table>\n</body>\n</html>\n"_s;
    QString reason;
    return platform::writeWholeFile(QDir(folder).filePath(u"index.html"_s), html.toUtf8(), &reason);
}

} // namespace walkthrough
