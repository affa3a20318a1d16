// Limits the length of a field's text.
#pragma once

#include "platform/runtime/Value.h"

#include <QValidator>

// Rejects an edit as a whole if it would exceed the limit. If the shown text already exceeds the limit, edits
// may not make it longer.
class vlMaxLengthFormatter : public QValidator {
    Q_OBJECT
public:
    static constexpr qint32 kvlMaxLength = 50;

    explicit vlMaxLengthFormatter(QObject *parent = nullptr)
        : QValidator(parent) {}

    [[nodiscard]] qint32 maxLength() const { return m_maxLength; } // UTF-16 units
    void setMaxLength(qint32 length) { m_maxLength = length; }

    // Call it with the text that the field shows or will show.
    void setShownText(const QString &text) { m_shownLength = text.size(); }

    [[nodiscard]] bool isPartialStringValid(const QString &partialString) const {
        return partialString.size() <= m_maxLength;
    }
    // Null if the value is not a text.
    [[nodiscard]] QString stringForObjectValue(const rt::Value &value) const { return rt::textValue(value); }
    [[nodiscard]] rt::Value getObjectValue(const QString &text) const { return text; }
    State validate(QString &input, int &) const override {
        return isPartialStringValid(input) || input.size() <= m_shownLength ? Acceptable : Invalid;
    }

private:
    qint32 m_maxLength = kvlMaxLength;
    qsizetype m_shownLength = 0;
};
