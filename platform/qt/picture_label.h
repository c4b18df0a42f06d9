// A picture box: its back colour, and over it the image resource it names,
// scaled to fit and centred. The image is looked up as ":/pictures/<name>.svg",
// then ".png"; without one the box shows only its colour.
#pragma once

#include <QColor>
#include <QPixmap>
#include <QSize>
#include <QString>
#include <QWidget>
#include <memory>

class QSvgRenderer;

namespace fc {

class PictureLabel : public QWidget {
    Q_OBJECT

  public:
    explicit PictureLabel(QWidget* parent = nullptr);
    ~PictureLabel() override;

    void setPicture(const QString& name);
    const QString& picture() const { return name_; }
    // True when the named picture was found.
    bool hasImage() const;

    void setColour(const QColor& colour);
    QColor colour() const { return colour_; }

    // The size the screen's model gives the box; an empty size leaves it free.
    void setPreferredSize(const QSize& size);
    QSize sizeHint() const override;

    // Where a picture named `name` would be found, or an empty string.
    static QString resourcePath(const QString& name);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString name_;
    QColor colour_ = Qt::white;
    QSize preferred_;
    std::unique_ptr<QSvgRenderer> svg_;
    QPixmap pixmap_;
};

}  // namespace fc
