// An item of a tool-bar: its names, its look and its action.
#pragma once

#include "platform/runtime/Object.h"

#include <QIcon>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <utility>

namespace platform {

// Items that every tool-bar has itself. It does not request them from its delegate, and they may occur more
// than once.
inline const QString toolbarFlexibleSpaceIdentifier = u"NSToolbarFlexibleSpaceItem"_s;
inline const QString toolbarFixedSpaceIdentifier = u"NSToolbarSpaceItem"_s;
inline const QString toolbarSeparatorIdentifier = u"NSToolbarSeparatorItem"_s;
[[nodiscard]] bool isStandardToolbarIdentifier(const QString &identifier);

// An item may be in many tool-bars at once. Each has its own control for it, and a change of the item updates
// all of them. Tool-bars do not own it; a deleted item disappears from all of them.
class ToolbarItem : public QObject, public rt::Object {
    Q_OBJECT
public:
    // `sender` is the control that was used: the item's button or view in one tool-bar. The action may delete
    // both.
    using Action = std::function<void(ToolbarItem &item, QWidget *sender)>;
    // Makes the item's own control for one tool-bar, which owns it.
    using ViewMaker = std::function<QWidget *()>;
    // Copies the item's image, label and tool tip to such a control: once after it was made and at every
    // change of the item.
    using ViewFiller = std::function<void(QWidget *view, const ToolbarItem &item)>;

    // Has the runtime class "ToolbarItem" unless `isa` is given.
    explicit ToolbarItem(const QString &identifier, rt::Class *isa = nullptr);
    ~ToolbarItem() override;

    // Also the object name of the item's control in each tool-bar.
    [[nodiscard]] const QString &itemIdentifier() const { return m_identifier; }

    // Shown below the image; "&" marks a mnemonic.
    [[nodiscard]] const QString &label() const { return m_label; }
    void setLabel(const QString &label) { set(m_label, label); }
    // Shown in the customization sheet; if empty, the label without its mnemonic.
    [[nodiscard]] QString paletteLabel() const;
    void setPaletteLabel(const QString &label) { set(m_paletteLabel, label); }
    [[nodiscard]] const QString &toolTip() const { return m_toolTip; }
    void setToolTip(const QString &toolTip) { set(m_toolTip, toolTip); }
    [[nodiscard]] const QIcon &image() const { return m_image; } // shown at 32 points
    void setImage(const QIcon &image);
    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { set(m_enabled, enabled); }

    void setAction(Action action) { m_action = std::move(action); } // without an action a click does nothing
    void perform(QWidget *sender);                                  // runs the action if the item is enabled
    // Replaces the button by the item's own control. In text-only mode the tool-bar still shows a button.
    void setView(ViewMaker make, ViewFiller fill);
    [[nodiscard]] QWidget *makeView() const { return m_makeView ? m_makeView() : nullptr; } // nullptr: none
    void fillView(QWidget *view) const {
        if (view && m_fillView)
            m_fillView(view, *this);
    }
    // The menu that the item opens; an item with a view marks it with an arrow. Not owned.
    void setMenu(QMenu *menu);
    [[nodiscard]] QMenu *menu() const { return m_menu; }

    // Called when the state of the program may have changed: enable or disable the item here.
    virtual void validate() {}

Q_SIGNALS:
    void changed();

private:
    template<typename T>
    void set(T &field, const T &value) {
        if (field == value)
            return;
        field = value;
        Q_EMIT changed();
    }

    QString m_identifier;
    QString m_label;
    QString m_paletteLabel;
    QString m_toolTip;
    QIcon m_image;
    bool m_enabled = true;
    Action m_action;
    ViewMaker m_makeView;
    ViewFiller m_fillView;
    QPointer<QMenu> m_menu;
};

// "New &meeting" without its mark: "New meeting".
[[nodiscard]] QString withoutMnemonic(const QString &text);

} // namespace platform
