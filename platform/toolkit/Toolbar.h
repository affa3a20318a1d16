// A tool-bar that asks its delegate for its items by identifier and that its user can rearrange.
#pragma once

#include "platform/toolkit/CustomizableToolbar.h"
#include "platform/toolkit/ToolbarArrangement.h"
#include "platform/toolkit/ToolbarItem.h"

#include <QHash>
#include <QTimer>
#include <QToolBar>

namespace platform {

// Of the button that shows what a narrow window has no room for.
inline const QString toolbarExtensionButtonName = u"qt_toolbar_ext_button"_s;

class ToolbarCustomization;

// The delegate answers "toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:" (the tool-bar as a widget,
// a text, a flag) with a ToolbarItem that it keeps alive, "toolbarDefaultItemIdentifiers:" and
// "toolbarAllowedItemIdentifiers:" with lists of texts.
//
// An identifier that the delegate cannot supply, because a plug-in is not loaded yet or has gone, keeps its
// place in the arrangement unseen, together with a separator directly before it, and is asked for again
// whenever the items are listed or revalidated. Main thread only.
class Toolbar : public QToolBar, public CustomizableToolbar {
    Q_OBJECT
public:
    // Tool-bars of one identifier share one remembered arrangement.
    explicit Toolbar(const QString &identifier, QWidget *parent = nullptr);
    ~Toolbar() override;

    void setDelegate(rt::Object *delegate); // not owned, may die; asked for the items at once

    // Whether the user has not hidden it; true before its window is first shown.
    [[nodiscard]] bool isToolbarVisible() const;
    [[nodiscard]] QList<ToolbarItem *> visibleItems() override;
    bool insertItem(const QString &identifier, int index) override;
    void removeItem(int index) override;
    void moveItem(int from, int to) override;
    [[nodiscard]] QList<ToolbarItem *> paletteItems() override;
    // The control by which this tool-bar shows an item; nullptr while it does not.
    [[nodiscard]] QWidget *controlFor(const QString &identifier) const;

    [[nodiscard]] ToolbarDisplayMode displayMode() const override { return m_arrangement->displayMode(); }
    void setDisplayMode(ToolbarDisplayMode mode) override { m_arrangement->setDisplayMode(mode); }
    // As the delegate has it, with what the offering parts put into a fresh tool-bar.
    void restoreDefault() override;
    // Lets every item validate itself and asks for missing ones. It also happens by itself, when a window is
    // activated and after keys and clicks: all events within a short time cause one round, and there is no
    // polling.
    void revalidate();
    // Opens the sheet in which the user adds, moves and removes items.
    void customize();

    // For a part of the program that supplies items beyond the delegate's lists: every tool-bar with a
    // delegate of the class offers them where it is customized. `restored` puts those that belong there by
    // themselves into a tool-bar that was set back to its default. Replaces an earlier offer for the class.
    static void offerItems(const QString &delegateClass, const QStringList &identifiers,
                           std::function<void(QWidget *window)> restored);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override; // of the application

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
    QPointer<ToolbarCustomization> m_sheet;
    QTimer m_validation;
};

// The tool-bar of a window; nullptr when it has none.
[[nodiscard]] Toolbar *windowToolbar(const QWidget *window);

} // namespace platform
