#include "standin/mailhost/windows/editor/RecurrenceSheet.h"

#include "standin/mailhost/windows/ControlNames.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>

namespace mailhost {

namespace {

const QStringList &frequencies() {
    static const QStringList names{QString(), u"DAILY"_s, u"WEEKLY"_s, u"MONTHLY"_s, u"YEARLY"_s};
    return names;
}

QDate untilDate(const QString &until) {
    if (until.size() < 16)
        return QDate::fromString(until.left(8), u"yyyyMMdd"_s);
    QDateTime instant = QDateTime::fromString(until.left(15), u"yyyyMMdd'T'HHmmss"_s);
    instant.setTimeSpec(Qt::UTC);
    return instant.toLocalTime().date();
}

// A rule, split into the parts that the sheet shows and the others.
struct Rule {
    int kind = 0; // index in frequencies(); 0: none or unknown
    int interval = 1;
    int count = 0; // 0: not limited
    QDate until;
    QStringList others;
    friend bool operator==(const Rule &, const Rule &) = default;
};

Rule parsed(const QString &text) {
    Rule rule;
    for (const QString &part : text.split(u';', Qt::SkipEmptyParts)) {
        const QString name = part.section(u'=', 0, 0).toUpper();
        const QString value = part.section(u'=', 1);
        if (name == u"FREQ")
            rule.kind = std::max(0, int(frequencies().indexOf(value.toUpper())));
        else if (name == u"INTERVAL")
            rule.interval = std::max(1, value.toInt());
        else if (name == u"COUNT")
            rule.count = value.toInt();
        else if (name == u"UNTIL")
            rule.until = untilDate(value);
        else
            rule.others.append(part);
    }
    return rule;
}

QString written(const Rule &rule) {
    QStringList parts{u"FREQ="_s + frequencies()[rule.kind]};
    if (rule.interval > 1)
        parts.append(u"INTERVAL=%1"_s.arg(rule.interval));
    if (rule.count > 0)
        parts.append(u"COUNT=%1"_s.arg(rule.count));
    if (rule.until.isValid()) {
        // The end of that day, in UTC as required for a rule with zoned times.
        const QDateTime end(rule.until, QTime(23, 59, 59));
        parts.append(u"UNTIL="_s + end.toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'"_s));
    }
    return (parts + rule.others).join(u';');
}

} // namespace

QString recurrenceText(const QString &text) {
    const Rule rule = parsed(text);
    if (rule.kind == 0)
        return text.isEmpty() ? QObject::tr("Does not repeat") : QObject::tr("Repeats");
    static const QStringList units{{}, u"day"_s, u"week"_s, u"month"_s, u"year"_s};
    QString shown = rule.interval == 1 ? QObject::tr("Every %1").arg(units[rule.kind])
                                       : QObject::tr("Every %1 %2s").arg(rule.interval).arg(units[rule.kind]);
    if (rule.count > 0)
        shown += QObject::tr(", %1 times").arg(rule.count);
    if (rule.until.isValid())
        shown += QObject::tr(", until %1").arg(QLocale().toString(rule.until, QLocale::ShortFormat));
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
    setObjectName(controls::recurrenceSheet);
    setWindowTitle(tr("Repeat"));
    m_kind->addItems({tr("Does not repeat"), tr("Daily"), tr("Weekly"), tr("Monthly"), tr("Yearly")});
    m_interval->setRange(1, 99);
    m_end->addItems({tr("Never"), tr("After a number of times"), tr("On a day")});
    m_count->setRange(1, 999);
    m_until->setCalendarPopup(true);
    m_until->setDisplayFormat(u"ddd d MMM yyyy"_s);
    auto *form = new QFormLayout(this);
    form->setContentsMargins(20, 18, 20, 16);
    const auto addRow = [form](const QString &name, const QString &label, QWidget *field) {
        field->setObjectName(name);
        form->addRow(label, field);
        field->setAccessibleName(QString(label).remove(u'&').remove(u':'));
    };
    addRow(controls::recurrenceKind, tr("&Repeats:"), m_kind);
    addRow(controls::recurrenceInterval, tr("&Every:"), m_interval);
    addRow(controls::recurrenceEnd, tr("E&nds:"), m_end);
    addRow(controls::recurrenceCount, tr("Number of &times:"), m_count);
    addRow(controls::recurrenceUntil, tr("&Last day:"), m_until);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(controls::recurrenceOk);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Set"));
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    const Rule shown = parsed(rule);
    m_kind->setCurrentIndex(shown.kind);
    m_interval->setValue(shown.interval);
    m_end->setCurrentIndex(shown.until.isValid() ? OnADay : shown.count > 0 ? AfterSomeTimes : Never);
    m_count->setValue(shown.count > 0 ? shown.count : 10);
    m_until->setDate(shown.until.isValid() ? shown.until : start.date().addMonths(3));
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
    const Rule before = parsed(m_before);
    Rule now{m_kind->currentIndex(), m_interval->value(), 0, {}, {}};
    if (now.kind == 0)
        return {};
    if (m_end->currentIndex() == AfterSomeTimes)
        now.count = m_count->value();
    if (m_end->currentIndex() == OnADay)
        now.until = m_until->date();
    if (now.kind == before.kind)
        now.others = before.others;
    return now == before ? m_before : written(now);
}

} // namespace mailhost
