// The fingerprint of a text.
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "platform/Literals.h"
#include "plugin/util/vlMD5.h"

#if PARLO_BENCH_OPENSSL
#include <openssl/evp.h>
#endif

namespace bench {

namespace {

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
