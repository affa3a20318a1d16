#include "platform/toolkit/Toolbar.h"

#include "platform/runtime/Runtime.h"
#include "platform/toolkit/ToolbarControls.h"

#include <QActionGroup>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QToolButton>
#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr int imageSide = 32;        // points
constexpr int validationDelay = 100; // milliseconds
// Object name of the button for items that do not fit into a narrow window.
const QString extensionButtonName = u"qt_toolbar_ext_button"_s;

struct Offer {
    QStringList identifiers;
    std::function<void(QWidget *)> restored;
};

QHash<QString, Offer> &offers() {
    static auto *all = new QHash<QString, Offer>;
    return *all;
}

QList<Offer> offersFor(const rt::Object *delegate) {
    QList<Offer> matching;
    for (const rt::Class *c = delegate ? delegate->isa() : nullptr; c; c = c->superclass())
        if (offers().contains(c->name()))
            matching.append(offers().value(c->name()));
    return matching;
}

QString standardLabel(const QString &identifier) {
    if (identifier == toolbarSeparatorIdentifier)
        return Toolbar::tr("Separator");
    return identifier == toolbarFixedSpaceIdentifier ? Toolbar::tr("Space") : Toolbar::tr("Flexible space");
}

// One item per kind is enough, because all separators are equal.
ToolbarItem *standardItem(const QString &identifier) {
    static auto *items = new QHash<QString, ToolbarItem *>;
    ToolbarItem *&item = (*items)[identifier];
    if (!item) {
        item = new ToolbarItem(identifier);
        item->setLabel(standardLabel(identifier));
    }
    return item;
}

Qt::ToolButtonStyle styleOf(ToolbarDisplayMode mode) {
    if (mode == ToolbarDisplayMode::IconAndText)
        return Qt::ToolButtonTextUnderIcon;
    return mode == ToolbarDisplayMode::IconOnly ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextOnly;
}

} // namespace

Toolbar::Toolbar(const QString &identifier, QWidget *parent)
    : QToolBar(parent)
    , m_arrangement(ToolbarArrangement::shared(identifier)) {
    setMovable(false);
    setIconSize(QSize(imageSide, imageSide));
    if (auto *extension = findChild<QToolButton *>(extensionButtonName)) {
        extension->setToolTip(tr("More items"));
        extension->setAccessibleName(tr("More items"));
    }
    connect(m_arrangement.get(), &ToolbarArrangement::changed, this, &Toolbar::rebuild);
    m_validation.setSingleShot(true);
    m_validation.setInterval(validationDelay);
    connect(&m_validation, &QTimer::timeout, this, [this] {
        if (isVisible())
            revalidate();
    });
    QCoreApplication::instance()->installEventFilter(this);
}

void Toolbar::setDelegate(rt::Object *delegate) {
    m_delegate = rt::Weak<>(delegate);
    m_items.clear();
    rebuild();
}

bool Toolbar::isToolbarVisible() const {
    return !(isHidden() && testAttribute(Qt::WA_WState_ExplicitShowHide));
}

QStringList Toolbar::askForList(const char *selector) {
    return ToolbarArrangement::cleaned(
        rt::listValue(rt::send(m_delegate.get(), selector, rt::fromWidget(this))));
}

QStringList Toolbar::identifiers() {
    if (m_arrangement->identifiers())
        return *m_arrangement->identifiers();
    return askForList("toolbarDefaultItemIdentifiers:");
}

ToolbarItem *Toolbar::itemFor(const QString &identifier, bool willBeInserted) {
    if (isStandardToolbarIdentifier(identifier))
        return standardItem(identifier);
    if (ToolbarItem *known = m_items.value(identifier))
        return known;
    const rt::Value answer = rt::send(
        m_delegate.get(), "toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", rt::fromWidget(this),
        identifier, willBeInserted);
    auto *item = dynamic_cast<ToolbarItem *>(rt::objectValue(answer));
    if (!item || item->itemIdentifier() != identifier)
        return nullptr;
    m_items.insert(identifier, item);
    // Queued, because the item is already partly destroyed when it emits the signal.
    connect(item, &QObject::destroyed, this, &Toolbar::rebuild,
            Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
    return item;
}

// Leaves out missing items together with a separator directly before them.
QList<Toolbar::Place> Toolbar::places(const QStringList &identifiers) {
    QList<Place> result;
    for (int i = 0; i < int(identifiers.size()); ++i) {
        if (ToolbarItem *item = itemFor(identifiers[i], true)) {
            result.append({i, item});
            continue;
        }
        if (i > 0 && !result.isEmpty() && result.last().position == i - 1 &&
            identifiers[i - 1] == toolbarSeparatorIdentifier)
            result.removeLast();
    }
    return result;
}

QList<ToolbarItem *> Toolbar::visibleItems() {
    QList<ToolbarItem *> items;
    for (const Place &place : places(identifiers()))
        if (place.item)
            items.append(place.item);
    return items;
}

bool Toolbar::insertItem(const QString &identifier, int index) {
    QStringList list = identifiers();
    if (identifier.isEmpty() || identifier.size() > ToolbarArrangement::maximumIdentifierLength ||
        list.size() >= ToolbarArrangement::maximumItems)
        return false;
    if (!isStandardToolbarIdentifier(identifier) && list.contains(identifier))
        return false;
    if (!itemFor(identifier, true))
        return false;
    const QList<Place> shown = places(list);
    const bool atEnd = index >= int(shown.size());
    list.insert(atEnd ? int(list.size()) : shown[std::max(0, index)].position, identifier);
    m_arrangement->setIdentifiers(list);
    return true;
}

void Toolbar::removeItem(int index) {
    QStringList list = identifiers();
    const QList<Place> shown = places(list);
    if (index < 0 || index >= int(shown.size()))
        return;
    list.removeAt(shown[index].position);
    m_arrangement->setIdentifiers(list);
}

void Toolbar::moveItem(int from, int to) {
    QStringList list = identifiers();
    const QList<Place> shown = places(list);
    if (from < 0 || from >= int(shown.size()))
        return;
    const int target = std::clamp(to, 0, int(shown.size()) - 1);
    list.move(shown[from].position, shown[target].position);
    m_arrangement->setIdentifiers(list);
}

QList<ToolbarItem *> Toolbar::paletteItems() {
    QStringList candidates = askForList("toolbarAllowedItemIdentifiers:");
    for (const Offer &offer : offersFor(m_delegate.get()))
        candidates += offer.identifiers;
    candidates.removeIf(isStandardToolbarIdentifier); // added at the end
    candidates << toolbarSeparatorIdentifier << toolbarFixedSpaceIdentifier << toolbarFlexibleSpaceIdentifier;
    candidates.removeDuplicates();
    const QStringList present = identifiers();
    QList<ToolbarItem *> items;
    for (const QString &identifier : std::as_const(candidates)) {
        if (present.contains(identifier) && !isStandardToolbarIdentifier(identifier))
            continue;
        if (ToolbarItem *item = itemFor(identifier, false))
            items.append(item);
    }
    return items;
}

QWidget *Toolbar::controlFor(const QString &identifier) const {
    for (const Shown &shown : m_shown)
        if (shown.item && shown.item->itemIdentifier() == identifier)
            if (auto *action = qobject_cast<ToolbarAction *>(shown.action))
                return action->control();
    return nullptr;
}

void Toolbar::restoreDefault() {
    m_arrangement->forget();
    const QPointer<Toolbar> alive = this;
    for (const Offer &offer : offersFor(m_delegate.get()))
        if (alive && offer.restored)
            offer.restored(window());
}

void Toolbar::revalidate() {
    const QPointer<Toolbar> alive = this;
    const QList<Place> shown = places(identifiers());
    for (const Place &place : shown)
        if (place.item)
            place.item->validate();
    if (alive)
        arrange(shown);
}

void Toolbar::rebuild() {
    arrange(places(identifiers()));
    Q_EMIT rearranged();
}

QAction *Toolbar::makeAction(ToolbarItem *item) {
    if (item->itemIdentifier() != toolbarSeparatorIdentifier)
        return new ToolbarAction(item, this);
    auto *separator = new QAction(this);
    separator->setSeparator(true);
    return separator;
}

// Items that stay keep their control and the keyboard focus.
void Toolbar::arrange(const QList<Place> &places) {
    QList<Shown> former = std::exchange(m_shown, {});
    const bool keeps = toolButtonStyle() == styleOf(displayMode());
    setToolButtonStyle(styleOf(displayMode()));
    for (const Place &place : places) {
        ToolbarItem *item = place.item;
        if (!item)
            continue;
        const auto kept = std::find_if(former.cbegin(), former.cend(), [keeps, item](const Shown &shown) {
            return keeps && shown.item == item;
        });
        m_shown.append(kept != former.cend() ? *kept : Shown{item, makeAction(item)});
        if (kept != former.cend())
            former.erase(kept);
    }
    for (const Shown &gone : std::as_const(former)) {
        removeAction(gone.action);
        gone.action->deleteLater(); // it may be the action that was just triggered
    }
    for (int i = 0; i < int(m_shown.size()); ++i) {
        QAction *inPlace = actions().value(i);
        if (inPlace == m_shown[i].action)
            continue;
        insertAction(inPlace, m_shown[i].action);
        if (auto *action = qobject_cast<ToolbarAction *>(m_shown[i].action))
            action->fill();
    }
    orderFocus();
}

void Toolbar::orderFocus() {
    QWidget *last = nullptr;
    for (const Shown &shown : std::as_const(m_shown)) {
        QWidget *control = controlFor(shown.item->itemIdentifier());
        if (isStandardToolbarIdentifier(shown.item->itemIdentifier()) || !control)
            continue;
        if (last)
            setTabOrder(last, control);
        last = control;
    }
    QWidget *extension = findChild<QToolButton *>(extensionButtonName);
    if (last && extension)
        setTabOrder(last, extension);
}

bool Toolbar::eventFilter(QObject *, QEvent *event) {
    const bool mayChangeItems = event->type() == QEvent::WindowActivate ||
                                event->type() == QEvent::MouseButtonRelease ||
                                event->type() == QEvent::KeyRelease;
    if (mayChangeItems && !m_validation.isActive())
        m_validation.start();
    return false;
}

void Toolbar::offerItems(const QString &delegateClass, const QStringList &identifiers,
                         std::function<void(QWidget *window)> restored) {
    offers().insert(delegateClass, {identifiers, std::move(restored)});
}

void Toolbar::addDisplayModes(QMenu *menu) {
    auto *group = new QActionGroup(menu);
    const std::pair<ToolbarDisplayMode, QString> modes[] = {
        {ToolbarDisplayMode::IconAndText, tr("Icon &and text")},
        {ToolbarDisplayMode::IconOnly, tr("&Icon only")},
        {ToolbarDisplayMode::TextOnly, tr("&Text only")}};
    for (const auto &[mode, text] : modes) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(mode == displayMode());
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, mode = mode] { setDisplayMode(mode); });
    }
}

void Toolbar::contextMenuEvent(QContextMenuEvent *event) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addDisplayModes(menu);
    menu->addSeparator();
    QAction *action = menu->addAction(tr("&Customize tool-bar…"));
    connect(action, &QAction::triggered, this, &Toolbar::customizationRequested, Qt::QueuedConnection);
    menu->popup(event->globalPos());
    event->accept();
}

Toolbar *windowToolbar(const QWidget *window) {
    return window ? window->findChild<Toolbar *>() : nullptr;
}

} // namespace platform
