// Tables of localised texts.
#include "platform/Literals.h"
#include "platform/services/bundle/StringsTable.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace fuzz;

namespace {

QString quoted(QString text) {
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
    return u'"' + text + u'"';
}

void open(const QByteArray &bytes) {
    bool isWhole = false;
    const QHash<QString, QString> entries = platform::parseStringsTable(bytes, &isWhole);
    claim(entries == platform::parseStringsTable(bytes), "whether it is whole need not be asked");
    QString written;
    qsizetype size = 0;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        claim(!entry.value().isNull(), "a text is not null");
        size += entry.key().size() + entry.value().size();
        written += quoted(entry.key()) + u'=' + quoted(entry.value()) + u';';
    }
    claim(size <= bytes.size(), "texts are no larger than the table");
    if (!written.isValidUtf16())
        return; // an escaped half of a character has no UTF-8
    const QHash<QString, QString> read = platform::parseStringsTable(written.toUtf8(), &isWhole);
    claim(isWhole && read == entries, "what is written reads as before");
}

const AddFuzzTarget target("strings", open);

} // namespace
