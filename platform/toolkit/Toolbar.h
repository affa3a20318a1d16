// A tool-bar that gets its items by identifier from its delegate and that the user can rearrange.
#pragma once

#include "platform/toolkit/ToolbarArrangement.h"
#include "platform/toolkit/ToolbarItem.h"

#include <QHash>
#include <QTimer>
#include <QToolBar>

namespace platform {

// The delegate answers "toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:" (the tool-bar as a widget,
// a text, a flag) with a ToolbarItem that it keeps alive, "toolbarDefaultItemIdentifiers:" and
// "toolbarAllowedItemIdentifiers:" with lists of texts.
//
// An identifier that the delegate cannot supply (its plug-in is not loaded) keeps its place in the
// arrangement, but is hidden together with a separator directly before it. The tool-bar requests it again
// whenever it lists or revalidates its items. Main thread only.
class Toolbar : public QToolBar {
    Q_OBJECT
public:
    // Tool-bars with the same identifier share one stored arrangement.
    explicit Toolbar(const QString &identifier, QWidget *parent = nullptr);

    void setDelegate(rt::Object *delegate); // not owned, may be deleted; supplies the items at once

    // False if the user has hidden it; true before its window is first shown.
    [[nodiscard]] bool isToolbarVisible() const;
    // In order, including spaces, separators and items that do not fit into the window at present.
    [[nodiscard]] QList<ToolbarItem *> visibleItems();
    // The items that the user can add: allowed items, offered items and spaces. Items already in the tool-bar
    // are excluded unless they may occur more than once.
    [[nodiscard]] QList<ToolbarItem *> paletteItems();
    // Indexes are those of visibleItems() and are clamped. Returns false and changes nothing if the item is
    // already in the tool-bar or no part of the program supplies it.
    bool insertItem(const QString &identifier, int index);
    void removeItem(int index);
    void moveItem(int from, int to);
    // This tool-bar's control for an item; nullptr if it does not show the item.
    [[nodiscard]] QWidget *controlFor(const QString &identifier) const;

    [[nodiscard]] ToolbarDisplayMode displayMode() const { return m_arrangement->displayMode(); }
    void setDisplayMode(ToolbarDisplayMode mode) { m_arrangement->setDisplayMode(mode); }
    // Restores the delegate's default and the items that other parts insert into a new tool-bar.
    void restoreDefault();
    // Validates all items and requests missing ones. Also runs automatically when a window is activated and
    // after keys and clicks: all events within a short time cause one round; there is no polling.
    void revalidate();

    // For a part of the program that supplies items beyond the delegate's lists: every tool-bar whose
    // delegate has the class offers them in its customization sheet. `restored` inserts the default ones of
    // these items into a tool-bar that was reset. Replaces an earlier offer for the class.
    static void offerItems(const QString &delegateClass, const QStringList &identifiers,
                           std::function<void(QWidget *window)> restored);

Q_SIGNALS:
    void rearranged();             // the items or the display mode may have changed
    void customizationRequested(); // the user chose "Customize tool-bar" in the context menu

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override; // filters the application's events

private:
    struct Place {
        int position; // in the arrangement
        QPointer<ToolbarItem> item;
    };
    struct Shown {
        QPointer<ToolbarItem> item;
        QAction *action;
    };
    [[nodiscard]] QStringList identifiers();
    [[nodiscard]] QStringList askForList(const char *selector);
    [[nodiscard]] ToolbarItem *itemFor(const QString &identifier, bool willBeInserted);
    [[nodiscard]] QList<Place> places(const QStringList &identifiers);
    void rebuild();
    void arrange(const QList<Place> &places);
    [[nodiscard]] QAction *makeAction(ToolbarItem *item);
    void orderFocus();
    void addDisplayModes(QMenu *menu);

    std::shared_ptr<ToolbarArrangement> m_arrangement;
    rt::Weak<> m_delegate;
    QHash<QString, QPointer<ToolbarItem>> m_items;
    QList<Shown> m_shown;
    QTimer m_validation;
};

// The tool-bar of a window; nullptr if it has none.
[[nodiscard]] Toolbar *windowToolbar(const QWidget *window);

} // namespace platform
