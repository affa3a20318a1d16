#include "standin/mailhost/windows/editor/RecurrenceSheet.h"

#include "standin/mailhost/windows/ControlNames.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

namespace mailhost {

namespace {

const QStringList &frequencies() {
    static const QStringList names{QString(), u"DAILY"_s, u"WEEKLY"_s, u"MONTHLY"_s, u"YEARLY"_s};
    return names;
}

// The parts of a rule in their order.
QList<std::pair<QString, QString>> partsOf(const QString &rule) {
    QList<std::pair<QString, QString>> parts;
    for (const QString &part : rule.split(u';', Qt::SkipEmptyParts))
        parts.append({part.section(u'=', 0, 0).toUpper(), part.section(u'=', 1)});
    return parts;
}

QString partOf(const QString &rule, const QString &name) {
    for (const auto &[key, value] : partsOf(rule))
        if (key == name)
            return value;
    return {};
}

QDate untilDate(const QString &until) {
    if (until.size() < 16)
        return QDate::fromString(until.left(8), u"yyyyMMdd"_s);
    QDateTime instant = QDateTime::fromString(until.left(15), u"yyyyMMdd'T'HHmmss"_s);
    instant.setTimeSpec(Qt::UTC);
    return instant.toLocalTime().date();
}

} // namespace

QString recurrenceText(const QString &rule) {
    const auto kind = frequencies().indexOf(partOf(rule, u"FREQ"_s).toUpper());
    if (rule.isEmpty() || kind < 1)
        return rule.isEmpty() ? QObject::tr("Does not repeat") : QObject::tr("Repeats");
    static const QStringList units{{}, u"day"_s, u"week"_s, u"month"_s, u"year"_s};
    const int interval = std::max(1, partOf(rule, u"INTERVAL"_s).toInt());
    QString text = interval == 1 ? QObject::tr("Every %1").arg(units[kind])
                                 : QObject::tr("Every %1 %2s").arg(interval).arg(units[kind]);
    if (const QString count = partOf(rule, u"COUNT"_s); !count.isEmpty())
        text += QObject::tr(", %1 times").arg(count);
    if (const QDate until = untilDate(partOf(rule, u"UNTIL"_s)); until.isValid())
        text += QObject::tr(", until %1").arg(QLocale().toString(until, QLocale::ShortFormat));
    return text;
}

RecurrenceSheet::RecurrenceSheet(const QString &rule, const QDateTime &start, QWidget *parent)
    : QDialog(parent)
    , m_before(rule)
    , m_start(start)
    , m_kind(new QComboBox)
    , m_interval(new QSpinBox)
    , m_unit(new QLabel)
    , m_forever(new QRadioButton(tr("&Never ends")))
    , m_byCount(new QRadioButton(tr("Ends &after")))
    , m_count(new QSpinBox)
    , m_byDate(new QRadioButton(tr("Ends &on")))
    , m_until(new QDateEdit) {
    setObjectName(controls::recurrenceSheet);
    setWindowTitle(tr("Repeat"));
    build();
    read();
    enableFields();
}

void RecurrenceSheet::build() {
    m_kind->setObjectName(controls::recurrenceKind);
    m_kind->addItems({tr("Does not repeat"), tr("Daily"), tr("Weekly"), tr("Monthly"), tr("Yearly")});
    m_kind->setAccessibleName(tr("Repeats"));
    m_interval->setObjectName(controls::recurrenceInterval);
    m_interval->setRange(1, 99);
    m_interval->setAccessibleName(tr("Every"));
    m_forever->setObjectName(controls::recurrenceForever);
    m_byCount->setObjectName(controls::recurrenceByCount);
    m_count->setObjectName(controls::recurrenceCount);
    m_count->setRange(1, 999);
    m_count->setSuffix(tr(" times"));
    m_count->setAccessibleName(tr("Number of times"));
    m_byDate->setObjectName(controls::recurrenceByDate);
    m_until->setObjectName(controls::recurrenceUntil);
    m_until->setCalendarPopup(true);
    m_until->setDisplayFormat(u"ddd d MMM yyyy"_s);
    m_until->setAccessibleName(tr("Last day"));
    auto *every = new QHBoxLayout;
    every->addWidget(m_interval);
    every->addWidget(m_unit, 1);
    auto *form = new QFormLayout(this);
    form->setContentsMargins(20, 18, 20, 16);
    form->addRow(tr("&Repeats:"), m_kind);
    auto *everyLabel = new QLabel(tr("&Every:"));
    everyLabel->setBuddy(m_interval); // a row with a layout in it has none of its own
    form->addRow(everyLabel, every);
    form->addRow(QString(), m_forever);
    form->addRow(m_byCount, m_count);
    form->addRow(m_byDate, m_until);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(controls::recurrenceOk);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Set"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(controls::recurrenceCancel);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_kind, &QComboBox::currentIndexChanged, this, &RecurrenceSheet::enableFields);
    for (QRadioButton *button : {m_forever, m_byCount, m_byDate})
        connect(button, &QRadioButton::toggled, this, &RecurrenceSheet::enableFields);
}

void RecurrenceSheet::read() {
    m_kind->setCurrentIndex(
        std::max<int>(0, int(frequencies().indexOf(partOf(m_before, u"FREQ"_s).toUpper()))));
    m_interval->setValue(std::max(1, partOf(m_before, u"INTERVAL"_s).toInt()));
    const QDate until = untilDate(partOf(m_before, u"UNTIL"_s));
    m_count->setValue(partOf(m_before, u"COUNT"_s).isEmpty() ? 10 : partOf(m_before, u"COUNT"_s).toInt());
    m_until->setDate(until.isValid() ? until : m_start.date().addMonths(3));
    if (until.isValid())
        m_byDate->setChecked(true);
    else if (!partOf(m_before, u"COUNT"_s).isEmpty())
        m_byCount->setChecked(true);
    else
        m_forever->setChecked(true);
}

void RecurrenceSheet::enableFields() {
    static const QStringList units{{}, tr("days"), tr("weeks"), tr("months"), tr("years")};
    const bool recurs = m_kind->currentIndex() > 0;
    m_unit->setText(units[m_kind->currentIndex()]);
    for (QWidget *field : {static_cast<QWidget *>(m_interval), static_cast<QWidget *>(m_forever),
                           static_cast<QWidget *>(m_byCount), static_cast<QWidget *>(m_byDate)})
        field->setEnabled(recurs);
    m_count->setEnabled(recurs && m_byCount->isChecked());
    m_until->setEnabled(recurs && m_byDate->isChecked());
}

QString RecurrenceSheet::rule() const {
    const QString frequency = frequencies()[m_kind->currentIndex()];
    if (frequency.isEmpty())
        return {};
    QStringList parts{u"FREQ="_s + frequency};
    if (m_interval->value() > 1)
        parts.append(u"INTERVAL=%1"_s.arg(m_interval->value()));
    if (m_byCount->isChecked())
        parts.append(u"COUNT=%1"_s.arg(m_count->value()));
    if (m_byDate->isChecked()) {
        // The end of that day, in UTC as a rule with zoned times has to have it.
        const QDateTime end(m_until->date(), QTime(23, 59, 59));
        parts.append(u"UNTIL="_s + end.toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'"_s));
    }
    static const QStringList shown{u"FREQ"_s, u"INTERVAL"_s, u"COUNT"_s, u"UNTIL"_s};
    const bool sameKind = partOf(m_before, u"FREQ"_s).toUpper() == frequency;
    const QString wantedUntil = partOf(parts.join(u';'), u"UNTIL"_s);
    bool same = sameKind;
    for (const QString &name : {u"INTERVAL"_s, u"COUNT"_s})
        same = same && partOf(m_before, name).toInt() == partOf(parts.join(u';'), name).toInt();
    same = same && untilDate(partOf(m_before, u"UNTIL"_s)) == untilDate(wantedUntil);
    if (same)
        return m_before;
    for (const auto &[key, value] : partsOf(m_before))
        if (sameKind && !shown.contains(key))
            parts.append(key + u'=' + value);
    return parts.join(u';');
}

} // namespace mailhost
