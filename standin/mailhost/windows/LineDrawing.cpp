#include "standin/mailhost/windows/LineDrawing.h"

#include "platform/Literals.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

// The linker takes only referenced parts of a static library.
static void takeInResource() {
    Q_INIT_RESOURCE(icons);
}

namespace mailhost {

namespace {

QByteArray sourceOf(const QString &name) {
    takeInResource();
    QFile file(u":/mailhost/%1.svg"_s.arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class Engine : public QIconEngine {
public:
    explicit Engine(QString name)
        : m_name(std::move(name)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        paintLineDrawing(*painter, m_name, rect, QGuiApplication::palette().color(group, role));
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine *clone() const override { return new Engine(m_name); }

private:
    QString m_name;
};

} // namespace

void paintLineDrawing(QPainter &painter, const QString &name, const QRectF &rect, const QColor &colour) {
    QSvgRenderer renderer(sourceOf(name).replace("currentColor", colour.name().toLatin1()));
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(&painter, rect);
}

QIcon lineDrawingIcon(const QString &name) {
    return QIcon(new Engine(name));
}

} // namespace mailhost
