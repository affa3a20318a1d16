#include "plugin/util/vlMD5.h"

namespace Quarvo {

void MD5::init() {
    m_hash.reset();
    m_bFinalized = false;
}

void MD5::feed(const void *bytes, int length) {
    if (bytes && length > 0)
        feed(QByteArray::fromRawData(static_cast<const char *>(bytes), length));
}

void MD5::feed(const QByteArray &bytes) {
    if (!m_bFinalized)
        m_hash.addData(bytes);
}

QString MD5::hex() {
    return QString::fromLatin1(binary().toHex());
}

QByteArray MD5::binary() {
    finalize();
    return m_hash.result();
}

} // namespace Quarvo
