// Plain text to HTML, and the fingerprint of a text.
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/util/vlMD5.h"

#if PARLO_BENCH_OPENSSL
#include <openssl/evp.h>
#endif

namespace bench {

namespace {

enum class Urls { Different, Alike, Chained };

QString textWith(int count, Urls kind) {
    QString text;
    for (int i = 0; i < count; ++i) {
        const QString name = kind == Urls::Alike ? u"the-same"_s : QString::number(i);
        text += u"Item %1 of the agenda, with what was said of it the last time, is found under "
                "https://meetings.parlo.example/%2/%3"_s.arg(QString::number(i), name, QString(i % 40, u'x'));
        // One address begins inside another, and the line has not ended yet.
        text += kind == Urls::Chained ? u"?from=http://other.example/%1"_s.arg(i) : QString();
        text += u" or in the room.\r\n"_s;
    }
    return text;
}

Work convert(const QString &text) {
    return repeating([text] { keep(vlBodyHelper::sharedInstance().convertPlainTextToHTML(text)); });
}

void compareLinks(const QString &what, Urls kind) {
    for (const int count : {1, 100})
        addRow(u"text with URLs (%2), %1 of them"_s.arg(QString::number(count), what),
               timeText(sideBySide({convert(textWith(count, kind))}).seconds[0]), QString(), QString(),
               QString(), Reached::NoAim);
}

#if PARLO_BENCH_OPENSSL
QByteArray withOpenssl(const QByteArray &bytes) {
    QByteArray digest(EVP_MAX_MD_SIZE, Qt::Uninitialized);
    unsigned size = 0;
    EVP_Digest(bytes.constData(), std::size_t(bytes.size()), reinterpret_cast<unsigned char *>(digest.data()),
               &size, EVP_md5(), nullptr);
    digest.resize(int(size));
    return digest;
}
#endif

QByteArray withOurs(const QByteArray &bytes) {
    Quarvo::MD5 digest;
    digest.feed(bytes);
    return digest.binary();
}

} // namespace

void links() {
    compareLinks(u"different"_s, Urls::Different);
    compareLinks(u"all alike"_s, Urls::Alike);
    compareLinks(u"one in another"_s, Urls::Chained);
}

void digests() {
#if PARLO_BENCH_OPENSSL
    const QByteArray bytes(1'000'000, 'x');
    if (withOurs(bytes) != withOpenssl(bytes))
        qFatal("the digests differ");
    const Comparison times =
        sideBySide({repeating([&] { keep(withOurs(bytes)); }), repeating([&] { keep(withOpenssl(bytes)); })},
                   {.seconds = 2});
    addRatio(u"MD5 of 1 MB"_s, times.seconds[0], u"OpenSSL"_s, times.seconds[1], times.ratios[1], 1.15);
#else
    addNote(u"OpenSSL's library is not installed and is left out."_s);
    (void)withOurs({});
#endif
}

} // namespace bench
