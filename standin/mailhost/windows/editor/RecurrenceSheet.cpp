#include "standin/mailhost/windows/editor/RecurrenceSheet.h"

#include "standin/mailhost/windows/ControlNames.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QUrlQuery>

namespace mailhost {

namespace {

const QString frequencyPart = u"FREQ"_s;
const QString intervalPart = u"INTERVAL"_s;
const QString countPart = u"COUNT"_s;
const QString untilPart = u"UNTIL"_s;

const QStringList &frequencies() {
    static const QStringList names{QString(), u"DAILY"_s, u"WEEKLY"_s, u"MONTHLY"_s, u"YEARLY"_s};
    return names;
}

// The parts of a rule, whose names may be in lower case.
QUrlQuery partsOf(const QString &rule) {
    QUrlQuery parts;
    parts.setQueryDelimiters(u'=', u';');
    parts.setQuery(rule.toUpper());
    return parts;
}

void setPart(QUrlQuery &parts, const QString &name, const QString &value) {
    parts.removeQueryItem(name);
    if (!value.isEmpty())
        parts.addQueryItem(name, value);
}

// The place in frequencies(); 0: none or unknown.
int kindOf(const QUrlQuery &parts) {
    return std::max(0, int(frequencies().indexOf(parts.queryItemValue(frequencyPart))));
}

// 0: there is no such part.
int numberOf(const QUrlQuery &parts, const QString &name) {
    return parts.queryItemValue(name).toInt();
}

QDate untilOf(const QUrlQuery &parts) {
    const QString until = parts.queryItemValue(untilPart);
    if (until.size() < 16)
        return QDate::fromString(until.left(8), u"yyyyMMdd"_s);
    QDateTime instant = QDateTime::fromString(until.left(15), u"yyyyMMdd'T'HHmmss"_s);
    instant.setTimeSpec(Qt::UTC);
    return instant.toLocalTime().date();
}

// The end of that day, in UTC as required for a rule with zoned times.
QString lastInstantOf(const QDate &day) {
    return QDateTime(day, QTime(23, 59, 59)).toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'"_s);
}

} // namespace

QString recurrenceText(const QString &rule) {
    const QUrlQuery parts = partsOf(rule);
    const int kind = kindOf(parts);
    if (kind == 0)
        return rule.isEmpty() ? QObject::tr("Does not repeat") : QObject::tr("Repeats");
    static const QStringList units{{}, u"day"_s, u"week"_s, u"month"_s, u"year"_s};
    const int interval = std::max(1, numberOf(parts, intervalPart));
    QString shown = interval == 1 ? QObject::tr("Every %1").arg(units[kind])
                                  : QObject::tr("Every %1 %2s").arg(interval).arg(units[kind]);
    if (numberOf(parts, countPart) > 0)
        shown += QObject::tr(", %1 times").arg(numberOf(parts, countPart));
    if (const QDate until = untilOf(parts); until.isValid())
        shown += QObject::tr(", until %1").arg(QLocale().toString(until, QLocale::ShortFormat));
    return shown;
}

RecurrenceSheet::RecurrenceSheet(const QString &rule, const QDateTime &start, QWidget *parent)
    : QDialog(parent)
    , m_before(rule)
    , m_kind(new QComboBox)
    , m_interval(new QSpinBox)
    , m_end(new QComboBox)
    , m_count(new QSpinBox)
    , m_until(new QDateEdit) {
    setWindowTitle(tr("Repeat"));
    m_kind->addItems({tr("Does not repeat"), tr("Daily"), tr("Weekly"), tr("Monthly"), tr("Yearly")});
    m_interval->setRange(1, 9999);
    m_end->addItems({tr("Never"), tr("After a number of times"), tr("On a day")});
    m_count->setRange(1, 9999);
    m_until->setCalendarPopup(true);
    m_until->setDisplayFormat(u"ddd d MMM yyyy"_s);
    auto *form = new QFormLayout(this);
    form->setContentsMargins(20, 18, 20, 16);
    m_kind->setObjectName(controls::recurrenceKind);
    const auto addRow = [form](const QString &label, QWidget *field) {
        form->addRow(label, field);
        field->setAccessibleName(QString(label).remove(u'&').remove(u':'));
    };
    addRow(tr("&Repeats:"), m_kind);
    addRow(tr("&Every:"), m_interval);
    addRow(tr("E&nds:"), m_end);
    addRow(tr("Number of &times:"), m_count);
    addRow(tr("&Last day:"), m_until);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(controls::recurrenceOk);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Set"));
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    const QUrlQuery parts = partsOf(rule);
    const int count = numberOf(parts, countPart);
    const QDate until = untilOf(parts);
    m_kind->setCurrentIndex(kindOf(parts));
    m_interval->setValue(std::max(1, numberOf(parts, intervalPart)));
    m_end->setCurrentIndex(until.isValid() ? OnADay : count > 0 ? AfterSomeTimes : Never);
    m_count->setValue(count > 0 ? count : 10);
    m_until->setDate(until.isValid() ? until : start.date().addMonths(3));
    for (QComboBox *chooser : {m_kind, m_end})
        connect(chooser, &QComboBox::currentIndexChanged, this, &RecurrenceSheet::enableFields);
    enableFields();
}

void RecurrenceSheet::enableFields() {
    static const QStringList units{{}, tr(" days"), tr(" weeks"), tr(" months"), tr(" years")};
    const bool recurs = m_kind->currentIndex() > 0;
    m_interval->setSuffix(units[m_kind->currentIndex()]);
    m_interval->setEnabled(recurs);
    m_end->setEnabled(recurs);
    m_count->setEnabled(recurs && m_end->currentIndex() == AfterSomeTimes);
    m_until->setEnabled(recurs && m_end->currentIndex() == OnADay);
}

QString RecurrenceSheet::rule() const {
    QUrlQuery parts = partsOf(m_before);
    const int kind = m_kind->currentIndex();
    if (kind == 0)
        return kindOf(parts) == 0 ? m_before : QString();
    if (kind != kindOf(parts))
        parts = partsOf(frequencyPart + u'=' + frequencies()[kind]);
    const int count = m_end->currentIndex() == AfterSomeTimes ? m_count->value() : 0;
    const QDate until = m_end->currentIndex() == OnADay ? m_until->date() : QDate();
    if (m_interval->value() != std::max(1, numberOf(parts, intervalPart)))
        setPart(parts, intervalPart, QString::number(m_interval->value()));
    if (count != numberOf(parts, countPart))
        setPart(parts, countPart, count > 0 ? QString::number(count) : QString());
    if (until != untilOf(parts))
        setPart(parts, untilPart, until.isValid() ? lastInstantOf(until) : QString());
    return parts == partsOf(m_before) ? m_before : parts.toString();
}

} // namespace mailhost
