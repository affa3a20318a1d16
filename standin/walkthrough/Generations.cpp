#include "standin/walkthrough/Generations.h"

#include "platform/Literals.h"
#include "platform/services/storage/WholeFile.h"
#include "standin/support/Child.h"
#include "standin/walkthrough/Report.h"

#include <QCoreApplication>
#include <QDir>
#include <algorithm>
#include <cstdio>

namespace walkthrough {

namespace {

const QString passed = u"ok - "_s;
const QString failedStep = u"not ok - "_s;
const QString remark = u"# "_s;

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

void printLine(const QString &line) {
    std::fprintf(stdout, "%s\n", qPrintable(line));
    std::fflush(stdout);
}

} // namespace

void Generations::run(const QString &hostVersion, const QStringList &arguments) {
    m_hosts.append(hostVersion);
    m_place = 0;
    standin::Child process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_crashed = !process.run(QCoreApplication::applicationFilePath(), arguments) || m_crashed;
    while (process.waitForReadyRead(-1) || process.canReadLine())
        while (process.canReadLine())
            take(QString::fromUtf8(process.readLine()).trimmed());
    process.waitForFinished(-1);
    const bool crashed = process.exitStatus() == QProcess::CrashExit;
    m_crashed = m_crashed || crashed;
    if (crashed || process.exitCode() != 0)
        add(false, u"the walk-through comes to its end (%1 %2)"_s
                       .arg(crashed ? u"killed by signal"_s : u"exit code"_s)
                       .arg(process.exitCode()));
}

void Generations::take(const QString &line) {
    if (line.startsWith(pictureMark)) {
        m_pictures << line.sliced(pictureMark.size());
    } else if (line.startsWith(passed)) {
        add(true, line.sliced(passed.size()));
    } else if (line.startsWith(failedStep)) {
        add(false, line.sliced(failedStep.size()));
    } else {
        if (line.startsWith(remark) && m_place > 0)
            m_steps[m_place - 1].results[m_hosts.last()].messages << line.sliced(remark.size());
        printLine(line);
    }
}

// A step of only one generation comes after the step that it follows there.
void Generations::add(bool ok, const QString &text) {
    auto step = std::find_if(m_steps.begin() + m_place, m_steps.end(),
                             [&text](const Step &known) { return known.text == text; });
    if (step == m_steps.end())
        step = m_steps.insert(m_place, {text, {}});
    step->results.insert(m_hosts.last(), {ok, std::exchange(m_pictures, {}), {}});
    m_place = step - m_steps.begin() + 1;
    m_failed += ok ? 0 : 1;
    printLine(
        u"%1 %2 - host %3: %4"_s.arg(ok ? u"ok"_s : u"not ok"_s).arg(++m_count).arg(m_hosts.last(), text));
}

bool Generations::writePage(const QString &folder) const {
    QString html =
        head + u"<p>%1 of %2 steps passed.</p>\n<table>\n<thead><tr><th>Step</th>"_s.arg(m_count - m_failed)
                   .arg(m_count);
    for (const QString &host : m_hosts)
        html += u"<th>Host %1</th>"_s.arg(host.toHtmlEscaped());
    html += u"</tr></thead>\n<tbody>\n"_s;
    for (const Step &step : m_steps) {
        html += u"<tr><td>%1</td>\n"_s.arg(step.text.toHtmlEscaped());
        for (const QString &host : m_hosts) {
            const Result result = step.results.value(host);
            html += !step.results.contains(host) ? u"<td>not a step of this host\n"_s
                    : result.ok                  ? u"<td>passed\n"_s
                                                 : u"<td><span class=\"failed\">failed</span>\n"_s;
            for (const QString &message : result.messages)
                html += u"<code>%1</code>\n"_s.arg(message.toHtmlEscaped());
            for (const QString &picture : result.pictures) {
                const QString path = u"host-%1/%2"_s.arg(host, picture).toHtmlEscaped();
                html += u"<a href=\"%1\"><img src=\"%1\" alt=\"%1\" loading=\"lazy\"></a>\n"_s.arg(path);
            }
            html += u"</td>\n"_s;
        }
        html += u"</tr>\n"_s;
    }
    html += u"</tbody>\n</table>\n</body>\n</html>\n"_s;
    QString reason;
    return platform::writeWholeFile(QDir(folder).filePath(u"index.html"_s), html.toUtf8(), &reason);
}

} // namespace walkthrough
