// Tables of localised texts.
#include "platform/Literals.h"
#include "platform/services/bundle/StringsTable.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace fuzz;

namespace {

using Texts = QMap<QString, QString>;

Texts read(const QByteArray &bytes) {
    const QHash<QString, QString> entries = platform::parseStringsTable(bytes);
    Texts texts;
    for (const auto &[key, text] : entries.asKeyValueRange()) {
        claim(!text.isNull(), "a text is not null");
        texts.insert(key, text);
    }
    return texts;
}

QString quoted(QString text) {
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
    return u'"' + text + u'"';
}

QString writtenText(const Texts &texts) {
    QString written;
    for (const auto &[key, text] : texts.asKeyValueRange())
        written += quoted(key) + u'=' + quoted(text) + u';';
    return written;
}

void open(const QByteArray &bytes) {
    const Texts texts = read(bytes);
    const QString written = writtenText(texts);
    claim(written.size() <= 2 * bytes.size() + 6 * texts.size(),
          "the size of the texts is in proportion to the table");
    // A lone surrogate, which an escape can make, has no UTF-8.
    if (written.isValidUtf16())
        claimRoundTrip(
            texts, [](const Texts &all) { return writtenText(all).toUtf8(); }, read);
}

const AddFuzzTarget target("strings", open);

} // namespace
