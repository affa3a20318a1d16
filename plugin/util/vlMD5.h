// The MD5 digest (RFC 1321).
#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QString>

namespace Quarvo {

class MD5 {
public:
    virtual ~MD5() = default;

    void init(); // restarts
    void reset() { init(); }
    // Adds bytes. Ignores a length of 0 or less, and all input after hex() or binary().
    void feed(const void *bytes, int length);
    void feed(const QByteArray &bytes);
    void finalize() { m_bFinalized = true; }
    [[nodiscard]] QString hex();       // 32 lower-case digits; finalizes
    [[nodiscard]] QByteArray binary(); // 16 bytes; finalizes

private:
    QCryptographicHash m_hash{QCryptographicHash::Md5};
    bool m_bFinalized = false;
};

} // namespace Quarvo
