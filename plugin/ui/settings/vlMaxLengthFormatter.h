// Keeps the text of a field within a length.
#pragma once

#include "platform/runtime/Value.h"

#include <QValidator>

// An edit that would make the text longer is refused as a whole; the field keeps what it had. A text that is
// longer when it is shown may be edited as long as it does not become longer than that.
class vlMaxLengthFormatter : public QValidator {
    Q_OBJECT
public:
    static constexpr qint32 kvlMaxLength = 50;

    explicit vlMaxLengthFormatter(QObject *parent = nullptr)
        : QValidator(parent) {}

    [[nodiscard]] qint32 maxLength() const { return m_maxLength; } // UTF-16 units
    void setMaxLength(qint32 length) { m_maxLength = length; }

    // What the field shows, or is about to show.
    void setShownText(const QString &text) { m_shownLength = text.size(); }

    [[nodiscard]] bool isPartialStringValid(const QString &partialString) const {
        return partialString.size() <= m_maxLength;
    }
    // Null when it is no text.
    [[nodiscard]] QString stringForObjectValue(const rt::Value &value) const { return rt::textValue(value); }
    [[nodiscard]] rt::Value getObjectValue(const QString &text) const { return text; }
    State validate(QString &input, int &) const override {
        return isPartialStringValid(input) || input.size() <= m_shownLength ? Acceptable : Invalid;
    }

private:
    qint32 m_maxLength = kvlMaxLength;
    qsizetype m_shownLength = 0;
};
