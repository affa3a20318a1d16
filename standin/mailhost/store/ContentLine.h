// One content line of an iCalendar file (RFC 5545, section 3.1), kept with the very text that it has in the
// file.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace mailhost {

// A line is changed only through the setters, which write it anew (folded at 75 octets, with the line end
// that it had); parameters that a setter does not name keep their text even then. All texts are octets as in
// the file.
class ContentLine {
public:
    ContentLine() = default;
    // `source` is the line as in the file: with its folds and its line end, which the last line may lack.
    explicit ContentLine(QByteArray source);
    static ContentLine make(const QByteArray &name, const QByteArray &value, const QByteArray &lineEnd);

    [[nodiscard]] const QByteArray &source() const { return m_source; }
    // Upper case; empty for a blank line.
    [[nodiscard]] const QByteArray &name() const { return m_name; }
    // Unfolded, still escaped; empty for a line without a colon.
    [[nodiscard]] QByteArray value() const;
    [[nodiscard]] QByteArray lineEnd() const;
    // Without quotes, caret escapes (RFC 6868) decoded; several values are joined by commas, as in the file.
    // The name is upper case.
    [[nodiscard]] std::optional<QString> parameter(const QByteArray &name) const;

    void setValue(const QByteArray &value);
    // Quoted and escaped as needed. An existing one keeps its place.
    void setParameter(const QByteArray &name, const QString &value);
    void removeParameter(const QByteArray &name);
    // The same line, folded again with that line end.
    [[nodiscard]] ContentLine refolded(const QByteArray &lineEnd) const;

private:
    struct Parameter {
        QByteArray name; // upper case
        QByteArray text; // as written, with its name
    };
    struct Parts {
        QByteArray name; // as written
        QList<Parameter> parameters;
        std::optional<QByteArray> value; // none: a line without a colon
    };
    [[nodiscard]] QByteArray unfolded() const;
    [[nodiscard]] Parts parts() const;
    void assemble(const Parts &parts, const QByteArray &lineEnd);

    QByteArray m_source;
    QByteArray m_name;
};

// Octets of a file as text: UTF-8, or Latin-1 where they are not UTF-8.
[[nodiscard]] QString decodeOctets(const QByteArray &octets);

} // namespace mailhost
