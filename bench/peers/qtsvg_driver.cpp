// QtSvg, with a QPainter on a QImage.

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include "driver.h"

namespace {

class QtSvgRenderer {
public:
    bool loadAndDraw(const std::string& text, int width, int height) {
        if (image_.width() != width || image_.height() != height)
            image_ = QImage(width, height, QImage::Format_ARGB32_Premultiplied);
        image_.fill(Qt::transparent);
        QSvgRenderer renderer;
        if (!renderer.load(QByteArray::fromRawData(text.data(), static_cast<int>(text.size()))))
            return false;
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        QPainter painter(&image_);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QRectF(0, 0, width, height));
        return true;
    }

    const uint32_t* pixels() const { return reinterpret_cast<const uint32_t*>(image_.constBits()); }

private:
    QImage image_;
};

void ignoreMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(ignoreMessage);          // remarks about the files
    QGuiApplication application(count, arguments);  // fonts need it
    QtSvgRenderer renderer;
    return peers::serve(renderer);
}
