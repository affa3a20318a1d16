#include "plugin/ui/settings/vlMaxLengthFormatter.h"

vlMaxLengthFormatter::vlMaxLengthFormatter(QObject *parent)
    : QValidator(parent) {}

bool vlMaxLengthFormatter::isPartialStringValid(const QString &partialString) const {
    return partialString.size() <= m_maxLength;
}

QString vlMaxLengthFormatter::stringForObjectValue(const rt::Value &value) const {
    return rt::textValue(value);
}

rt::Value vlMaxLengthFormatter::getObjectValue(const QString &text) const {
    return text;
}

QValidator::State vlMaxLengthFormatter::validate(QString &input, int &) const {
    return isPartialStringValid(input) || input.size() <= m_shownLength ? Acceptable : Invalid;
}
