// A tile of an appointment in the grid, of class "CCEventTileView". It draws, has the keyboard focus while it
// is selected, and supplies its accessible name. The surface below it handles the pointer.
#pragma once

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/windows/grid/GridScene.h"

#include <QWidget>

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
    // Makes a tile on that surface, initialised through the object runtime.
    static EventTileView *make(QWidget *surface, std::shared_ptr<const GridScene> scene, bool ghost);
    [[nodiscard]] rt::Object *initWithFrame(const QRectF &frame, rt::Object *controller,
                                            const rt::Value &fillColor, bool isGhost);

    void show(const Occurrence &occurrence, const GridPiece &piece, const QRect &frame);
    void setState(const TileState &state);
    [[nodiscard]] const Occurrence &occurrence() const { return m_occurrence; }
    [[nodiscard]] const GridPiece &piece() const { return m_piece; }
    [[nodiscard]] const TileState &state() const { return m_state; }
    [[nodiscard]] bool isGhost() const { return m_ghost; }

Q_SIGNALS:
    void focused();
    void pressed(); // pressed by an assistive program

protected:
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    EventTileView(QWidget *surface, std::shared_ptr<const GridScene> scene);
    // Drawn in the full colour.
    [[nodiscard]] bool isFull() const { return m_ghost || (m_state.selected && !m_state.dimmed); }
    void drawBody(QPainter &painter) const;
    QRect drawMarks(QPainter &painter, QRect area, const QColor &colour) const;
    void drawTexts(QPainter &painter) const;
    int drawHead(QPainter &painter, const QRect &area, int lines, const QString &text) const;
    [[nodiscard]] QString timesWithin(int width) const;

    std::shared_ptr<const GridScene> m_scene;
    Occurrence m_occurrence;
    GridPiece m_piece;
    TileState m_state;
    bool m_ghost = false;
};

[[nodiscard]] QString spokenDay(const QDate &date);

void defineTileClass();

} // namespace mailhost
