// A tile of an appointment in the grid, of class "CCEventTileView". It draws, has the keyboard focus while it
// is selected, and supplies its accessible name. The surface below it handles the pointer.
#pragma once

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/store/Appointment.h"
#include "standin/mailhost/windows/grid/GridStyle.h"
#include "standin/mailhost/windows/grid/TileTexts.h"

#include <QWidget>
#include <memory>

namespace mailhost {

// The visual state of a tile.
struct TileState {
    bool selected = false;
    bool hovered = false;
    bool dimmed = false; // its ghost is being dragged
    friend bool operator==(const TileState &a, const TileState &b) = default;
};

class EventTileView : public QWidget, public rt::Object {
    Q_OBJECT
public:
    // Makes a tile on that surface, initialised through the object runtime. The frame is in the surface's
    // coordinates; the controller may be nullptr.
    static EventTileView *make(QWidget *surface, const QRectF &frame, rt::Object *controller,
                               const QColor &fill, bool ghost);
    [[nodiscard]] rt::Object *initWithFrame(const QRectF &frame, rt::Object *controller,
                                            const rt::Value &fillColor, bool isGhost);

    void setStyle(std::shared_ptr<const GridStyle> style);
    void setOccurrence(const Occurrence &occurrence, const TileEnds &ends);
    void setState(const TileState &state);
    [[nodiscard]] const Occurrence &occurrence() const { return m_occurrence; }
    [[nodiscard]] const TileEnds &ends() const { return m_ends; }
    [[nodiscard]] const TileState &state() const { return m_state; }
    [[nodiscard]] bool isGhost() const { return m_ghost; }
    // Whether some of its texts are shortened or left out.
    [[nodiscard]] bool isShortened() const { return m_style && texts().isShortened(); }

Q_SIGNALS:
    void focused();
    void pressed(); // pressed by an assistive program

protected:
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *) override { m_texts.reset(); }

private:
    explicit EventTileView(QWidget *surface);
    [[nodiscard]] const TileTexts &texts() const;
    // Drawn in the full colour.
    [[nodiscard]] bool isFull() const { return m_ghost || (m_state.selected && !m_state.dimmed); }
    void drawBody(QPainter &painter) const;

    Occurrence m_occurrence;
    TileEnds m_ends;
    TileState m_state;
    std::shared_ptr<const GridStyle> m_style;
    QColor m_fill;
    bool m_ghost = false;
    mutable std::optional<TileTexts> m_texts; // made at the first drawing in a size
};

void defineTileClass();

} // namespace mailhost
