#include "platform/qt/picture_label.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace fc {

PictureLabel::PictureLabel(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

PictureLabel::~PictureLabel() = default;

QString PictureLabel::resourcePath(const QString& name) {
    if (name.isEmpty())
        return {};
    for (const char* suffix : {".svg", ".png"}) {
        QString path = QStringLiteral(":/pictures/") + name + QLatin1String(suffix);
        if (QFile::exists(path))
            return path;
    }
    return {};
}

void PictureLabel::setPicture(const QString& name) {
    if (name == name_)
        return;
    name_ = name;
    svg_.reset();
    pixmap_ = QPixmap();
    const QString path = resourcePath(name);
    if (path.endsWith(QLatin1String(".svg"))) {
        svg_ = std::make_unique<QSvgRenderer>(path);
        if (!svg_->isValid())
            svg_.reset();
    } else if (!path.isEmpty()) {
        pixmap_.load(path);
    }
    update();
}

bool PictureLabel::hasImage() const {
    return svg_ != nullptr || !pixmap_.isNull();
}

void PictureLabel::setColour(const QColor& colour) {
    if (colour == colour_)
        return;
    colour_ = colour;
    update();
}

void PictureLabel::setPreferredSize(const QSize& size) {
    if (size == preferred_)
        return;
    preferred_ = size;
    if (preferred_.isValid() && !preferred_.isEmpty())
        setMinimumSize(preferred_);
    updateGeometry();
}

QSize PictureLabel::sizeHint() const {
    if (preferred_.isValid() && !preferred_.isEmpty())
        return preferred_;
    return {64, 64};
}

void PictureLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), colour_);
    if (!hasImage())
        return;
    QSize natural = svg_ ? svg_->defaultSize() : pixmap_.size();
    QRectF target(QPointF(0, 0), natural.scaled(size(), Qt::KeepAspectRatio));
    target.moveCenter(QRectF(rect()).center());
    if (svg_) {
        svg_->render(&painter, target);
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(target, pixmap_, QRectF(pixmap_.rect()));
    }
}

}  // namespace fc
