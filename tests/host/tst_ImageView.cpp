// SPDX-License-Identifier: MIT
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include "Host/HostContext.h"
#include "Simulation/SimulatedDevice.h"
#include "Simulation/SimulatedDevices.h"
#include "Viewer/ImageView.h"
#include "Viewer/ViewerWindow.h"
#include "support/BracketTranslator.h"

namespace {

const QString Camera = QStringLiteral("camera");
const QSize ImageSize(800, 600);
const QSize ViewSize(400, 300); ///< two image pixels per view pixel
const QRect Drawn(200, 150, 400, 300);

QImage plainImage(const QColor &colour, const QSize &size = ImageSize)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

} // namespace

/// Regions under the mouse and the keyboard.
class tst_ImageView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void dragging_data();
    void dragging();
    void dragsFollowTheZoom();
    void escapeTakesADragBack();
    void keysMoveTheSelectedRegion_data();
    void keysMoveTheSelectedRegion();
    void cursorTellsThePart_data();
    void cursorTellsThePart();
    void besideARegionTheImagePans();
    void selectsByClickAndTab();
    void removalEndsADrag();
    void otherButtonsLeaveADragAlone();
    void doubleClickZoomsBesideRegions();
    void linesShowOnEveryImage_data();
    void linesShowOnEveryImage();
    void regionsAreToldApart();
    void namesAreLegible_data();
    void namesAreLegible();
    void canvasStandsForAMissingPicture();

private:
    int draw(const QRect &area);
    QRect area(int handle) const { return m_regions->region(handle).area; }
    QPoint onView(const QPoint &pixel) const;
    /// View pixels per image pixel.
    double scale() const { return m_view->zoom() / m_view->devicePixelRatioF(); }
    void press(const QPoint &at) { QTest::mousePress(m_view->windowHandle(), Qt::LeftButton, {}, at); }
    void moveTo(const QPoint &at) { QTest::mouseMove(m_view->windowHandle(), at); }
    void release(const QPoint &at) { QTest::mouseRelease(m_view->windowHandle(), Qt::LeftButton, {}, at); }
    void drag(const QPoint &from, const QPoint &way);

    QTemporaryDir m_folder;
    std::unique_ptr<ImageRegions> m_regions;
    std::unique_ptr<ImageView> m_view;
    std::unique_ptr<QSignalSpy> m_reports;
};

void tst_ImageView::init()
{
    m_regions = std::make_unique<ImageRegions>();
    m_view = std::make_unique<ImageView>();
    m_reports = std::make_unique<QSignalSpy>(m_regions.get(), &ImageRegions::movedByUser);
    m_view->resize(ViewSize);
    m_view->showFrame(plainImage(Qt::black));
    m_view->regions().follow(*m_regions, Camera);
    m_view->show();
    m_view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
}

int tst_ImageView::draw(const QRect &wanted)
{
    return m_regions->draw(Camera, ImageSize, wanted.topLeft(), wanted.bottomRight() + QPoint(1, 1));
}

QPoint tst_ImageView::onView(const QPoint &pixel) const
{
    return (m_view->imageRect().topLeft() + QPointF(pixel) * scale()).toPoint();
}

void tst_ImageView::drag(const QPoint &from, const QPoint &way)
{
    press(from);
    moveTo(from + way);
    release(from + way);
}

void tst_ImageView::dragging_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("way");
    QTest::addColumn<QRect>("result");
    const QPoint way(10, -6);
    QTest::newRow("body") << QPoint(200, 150) << way << QRect(220, 138, 400, 300);
    QTest::newRow("left") << QPoint(100, 150) << way << QRect(220, 150, 380, 300);
    QTest::newRow("right") << QPoint(300, 150) << way << QRect(200, 150, 420, 300);
    QTest::newRow("top") << QPoint(200, 75) << way << QRect(200, 138, 400, 312);
    QTest::newRow("bottom") << QPoint(200, 225) << way << QRect(200, 150, 400, 288);
    QTest::newRow("top left") << QPoint(100, 75) << way << QRect(220, 138, 380, 312);
    QTest::newRow("top right") << QPoint(300, 75) << way << QRect(200, 138, 420, 312);
    QTest::newRow("bottom left") << QPoint(100, 225) << way << QRect(220, 150, 380, 288);
    QTest::newRow("bottom right") << QPoint(300, 225) << way << QRect(200, 150, 420, 288);
    QTest::newRow("just outside of an edge") << QPoint(305, 150) << way << QRect(200, 150, 420, 300);
    QTest::newRow("body beyond the image") << QPoint(200, 150) << QPoint(-190, 149) << QRect(0, 300, 400, 300);
    QTest::newRow("corner beyond the image") << QPoint(300, 225) << QPoint(99, 74) << QRect(200, 150, 598, 448);
    QTest::newRow("edges meet") << QPoint(300, 225) << QPoint(-250, -200) << QRect(200, 150, 1, 1);
    QTest::newRow("edge beyond its opposite") << QPoint(100, 150) << QPoint(290, 0) << QRect(599, 150, 1, 300);
    QTest::newRow("beside") << QPoint(50, 50) << way << Drawn;
}

void tst_ImageView::dragging()
{
    QFETCH(QPoint, from);
    QFETCH(QPoint, way);
    QFETCH(QRect, result);
    const int handle = draw(Drawn);
    press(from);
    moveTo(from);
    QCOMPARE(m_reports->size(), 0);
    moveTo(from + way);
    moveTo(from + way);
    release(from + way);
    moveTo(from);
    QCOMPARE(area(handle), result);
    QCOMPARE(m_reports->size(), result == Drawn ? 0 : 1);
}

void tst_ImageView::dragsFollowTheZoom()
{
    const int handle = draw(Drawn);
    m_view->zoomToOriginal();
    while (scale() < 4)
        m_view->zoomIn();
    drag({200, 150}, QPoint(20, 40)); // zoomed around its middle, the region has only its body in view
    const QPoint moved = area(handle).topLeft() - Drawn.topLeft();
    QCOMPARE(moved, QPoint(qRound(20 / scale()), qRound(40 / scale())));

    m_regions->place(Camera, handle, {390, 290}, {410, 310});
    drag(onView({410, 310}), (QPointF(3, 2) * scale()).toPoint());
    QCOMPARE(area(handle), QRect(390, 290, 23, 22));
}

void tst_ImageView::escapeTakesADragBack()
{
    const int handle = draw(Drawn);
    m_view->zoomToOriginal();
    const QRectF shown = m_view->imageRect();
    press({200, 150});
    moveTo({220, 160});
    QVERIFY(area(handle) != Drawn);
    QTest::keyClick(m_view.get(), Qt::Key_Escape);
    QCOMPARE(area(handle), Drawn);
    QCOMPARE(m_reports->size(), 2);
    moveTo({240, 160});
    release({240, 160});
    QCOMPARE(area(handle), Drawn);
    QCOMPARE(m_view->imageRect(), shown);
}

void tst_ImageView::keysMoveTheSelectedRegion_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QRect>("result");
    const int shift = Qt::ShiftModifier;
    const int control = Qt::ControlModifier;
    QTest::newRow("left") << int(Qt::Key_Left) << 0 << Drawn.translated(-1, 0);
    QTest::newRow("down by ten") << int(Qt::Key_Down) << shift << Drawn.translated(0, 10);
    QTest::newRow("wider") << int(Qt::Key_Right) << control << QRect(200, 150, 401, 300);
    QTest::newRow("lower by ten") << int(Qt::Key_Up) << (control | shift) << QRect(200, 150, 400, 290);
}

void tst_ImageView::keysMoveTheSelectedRegion()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QRect, result);
    const int other = draw(Drawn);
    const int handle = draw(Drawn);
    QTest::keyClick(m_view.get(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(area(handle), result);
    QCOMPARE(area(other), Drawn);
    QCOMPARE(m_reports->size(), 1);
}

void tst_ImageView::cursorTellsThePart_data()
{
    QTest::addColumn<QRect>("region");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<int>("cursor");
    QTest::newRow("beside") << Drawn << QPoint(50, 50) << int(Qt::ArrowCursor);
    QTest::newRow("body") << Drawn << QPoint(200, 150) << int(Qt::SizeAllCursor);
    QTest::newRow("left") << Drawn << QPoint(99, 150) << int(Qt::SizeHorCursor);
    QTest::newRow("bottom") << Drawn << QPoint(150, 226) << int(Qt::SizeVerCursor);
    QTest::newRow("top left") << Drawn << QPoint(102, 77) << int(Qt::SizeFDiagCursor);
    QTest::newRow("bottom left") << Drawn << QPoint(102, 226) << int(Qt::SizeBDiagCursor);
    QTest::newRow("body of a small one") << QRect(400, 300, 10, 10) << QPoint(202, 152) << int(Qt::SizeAllCursor);
}

void tst_ImageView::cursorTellsThePart()
{
    QFETCH(QRect, region);
    QFETCH(QPoint, at);
    draw(region);
    moveTo(at);
    QTEST(int(m_view->cursor().shape()), "cursor");
}

void tst_ImageView::besideARegionTheImagePans()
{
    const int handle = draw(QRect(390, 290, 20, 20));
    while (scale() < 1)
        m_view->zoomIn();
    const QPointF before = m_view->imageRect().topLeft();
    drag({50, 50}, {30, 20});
    QCOMPARE(m_view->imageRect().topLeft(), before + QPointF(30, 20));
    QCOMPARE(area(handle), QRect(390, 290, 20, 20));
    drag(onView({400, 300}), (QPointF(5, 6) * scale()).toPoint()); // on the region it does not
    QCOMPARE(m_view->imageRect().topLeft(), before + QPointF(30, 20));
    QCOMPARE(area(handle), QRect(395, 296, 20, 20));
}

void tst_ImageView::selectsByClickAndTab()
{
    const int first = draw(QRect(0, 0, 200, 200));
    const int second = draw(QRect(100, 100, 200, 200));
    QCOMPARE(m_view->regions().selected(), second);
    QTest::mouseClick(m_view->windowHandle(), Qt::LeftButton, {}, {25, 25});
    QCOMPARE(m_view->regions().selected(), first);
    QTest::keyClick(m_view.get(), Qt::Key_Tab);
    QCOMPARE(m_view->regions().selected(), second);
    QTest::keyClick(m_view.get(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(m_view->regions().selected(), first);
    QTest::mouseClick(m_view->windowHandle(), Qt::LeftButton, {}, {75, 75}); // on both
    QCOMPARE(m_view->regions().selected(), first);
    m_regions->remove(Camera, first);
    QCOMPARE(m_view->regions().selected(), second);
    QVERIFY(m_reports->isEmpty());
}

void tst_ImageView::removalEndsADrag()
{
    const int handle = draw(Drawn);
    const int other = draw(QRect(0, 0, 50, 50));
    press({200, 150});
    m_regions->remove(Camera, handle);
    moveTo({230, 170});
    release({230, 170});
    QCOMPARE(area(other), QRect(0, 0, 50, 50));
    QVERIFY(m_reports->isEmpty());
}

void tst_ImageView::otherButtonsLeaveADragAlone()
{
    const auto send = [this](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held, const QPointF &at) {
        QMouseEvent event(type, at, m_view->mapToGlobal(at.toPoint()), button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.get(), &event);
    };
    const int handle = draw(Drawn);
    send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, {200, 150});
    send(QEvent::MouseButtonPress, Qt::MiddleButton, Qt::LeftButton | Qt::MiddleButton, {200, 150});
    send(QEvent::MouseButtonRelease, Qt::MiddleButton, Qt::LeftButton, {200, 150});
    send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, {210, 150});
    QCOMPARE(area(handle), Drawn.translated(20, 0));
    send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, {210, 150});
    QVERIFY(!m_view->regions().isDragging());
}

void tst_ImageView::doubleClickZoomsBesideRegions()
{
    draw(Drawn);
    QTest::mouseDClick(m_view->windowHandle(), Qt::LeftButton, {}, {200, 150});
    QVERIFY(m_view->isFitted());
    QTest::mouseDClick(m_view->windowHandle(), Qt::LeftButton, {}, {50, 50});
    QVERIFY(!m_view->isFitted());
}

void tst_ImageView::linesShowOnEveryImage_data()
{
    QTest::addColumn<QColor>("image");
    QTest::addColumn<QRect>("region");
    QTest::newRow("dark") << QColor(Qt::black) << Drawn;
    QTest::newRow("bright") << QColor(Qt::white) << Drawn;
    QTest::newRow("whole image, dark") << QColor(Qt::black) << QRect(QPoint(), ImageSize);
    QTest::newRow("whole image, bright") << QColor(Qt::white) << QRect(QPoint(), ImageSize);
}

void tst_ImageView::linesShowOnEveryImage()
{
    QFETCH(QColor, image);
    QFETCH(QRect, region);
    m_view->showStill(plainImage(image));
    m_view->clearFocus();
    draw(region);
    const QImage painted = m_view->grab().toImage();
    const QRectF edge = QRectF(onView(region.topLeft()), onView(region.bottomRight()));
    const double ratio = painted.devicePixelRatio();
    const int y = int((edge.top() + edge.height() / 4) * ratio);
    for (const int x : {int(edge.left() * ratio), int(edge.right() * ratio)}) {
        int darkest = 255;
        int brightest = 0;
        for (int beside = qMax(0, x - 8); beside < qMin(painted.width(), x + 8); ++beside) {
            const int gray = qGray(painted.pixel(beside, y));
            darkest = qMin(darkest, gray);
            brightest = qMax(brightest, gray);
        }
        QVERIFY2(brightest - darkest > 150, qPrintable(QString::number(brightest - darkest)));
    }
}

/// Each kind of region has a name, which is translated, and a colour.
void tst_ImageView::regionsAreToldApart()
{
    BracketTranslator translator("RegionEditor");
    QCoreApplication::installTranslator(&translator);
    QStringList labels;
    QSet<QRgb> colours;
    for (const std::optional<int> number : {std::optional<int>(), std::optional(0), std::optional(2)}) {
        const int handle = m_regions->draw(Camera, ImageSize, {200, 200}, {260, 240}, number);
        labels << RegionEditor::labelOf(m_regions->region(handle));
        const QImage painted = m_view->grab().toImage();
        const QPointF edge = QPointF(onView({200, 210})) * painted.devicePixelRatio();
        colours.insert(painted.pixel(edge.toPoint()));
        m_regions->remove(Camera, handle);
    }
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(labels, QString::fromUtf8("60 × 40|[Measure range: 60 × 40]|[Mask 2: 60 × 40]").split(QLatin1Char('|')));
    QCOMPARE(colours.size(), 3);
}

void tst_ImageView::namesAreLegible_data()
{
    QTest::addColumn<QRectF>("region");
    QTest::newRow("free") << QRectF(200, 150, 200, 90);
    QTest::newRow("small, in the corner") << QRectF(0, 0, 30, 30);
    QTest::newRow("all of the view") << QRectF(0, 0, 600, 300);
    QTest::newRow("beyond the view") << QRectF(-50, -50, 800, 400);
    QTest::newRow("at the right end, to the bottom") << QRectF(570, 10, 30, 290);
}

/// Of four regions at the same place; none hides a grip.
void tst_ImageView::namesAreLegible()
{
    QFETCH(QRectF, region);
    const QRectF seen(0, 0, 600, 300);
    std::vector<QRectF> taken = regionGrips(region, seen);
    for (int label = 0; label < 4; ++label) {
        const QRectF place = labelPlace({150, 24}, region, seen, taken);
        QVERIFY(seen.contains(place));
        for (const QRectF &other : taken)
            QVERIFY(!other.intersects(place));
        taken.push_back(place);
    }
}

void tst_ImageView::canvasStandsForAMissingPicture()
{
    HostContext context({m_folder.filePath(QStringLiteral("viewer.ini")), {}});
    for (std::unique_ptr<Device> &one : makeSimulatedDevices())
        QVERIFY(context.devices().add(std::move(one)));
    ViewerWindow window(context);
    const QString id = QStringLiteral("SIM-AREA-01");
    window.openWhenKnown(id);
    QTRY_VERIFY(context.devices().isReady(id));
    const auto size = [&] {
        QString width;
        QString height;
        context.values().read(id, QStringLiteral("Width"), &width);
        context.values().read(id, QStringLiteral("Height"), &height);
        return QSize(width.toInt(), height.toInt());
    };
    const QSize whole = size();
    int handle = context.panelRegions().draw(id, {0, 0}, {whole.width(), whole.height()});
    QVERIFY(window.image().isCanvas());
    QCOMPARE(window.image().imageSize(), whole);

    QVERIFY(context.sessions().startAcquisition(id));
    QTRY_VERIFY(!window.image().isCanvas());
    context.sessions().stopAcquisition(id);
    QCoreApplication::processEvents(); // a frame that was on its way
    QVERIFY(!window.image().isCanvas());
    context.panelRegions().remove(id, handle);
    QCOMPARE(window.image().frame().size(), whole);

    QVERIFY(context.values().write(id, QStringLiteral("Width"), QStringLiteral("320")));
    handle = context.panelRegions().draw(id, {10, 10}, {20, 20});
    QVERIFY(window.image().isCanvas());
    QCOMPARE(window.image().imageSize(), QSize(320, whole.height()));
    context.panelRegions().remove(id, handle);
    QCOMPARE(window.image().frame().size(), whole);

    // What the last picture shows stays where it is on the sensor.
    QVERIFY(context.values().write(id, QStringLiteral("OffsetX"), QStringLiteral("400")));
    QVERIFY(context.panelRegions().draw(id, {10, 10}, {20, 20}));
    const QImage picture = window.image().canvasPicture();
    QCOMPARE(picture.size(), whole);
    const QImage seen = window.image().grab().toImage();
    const QRectF canvas = window.image().imageRect();
    int unlike = 0; // of the pixels in one row, as they are seen and as they were taken
    for (int x = 10; x < 310; x += 20) {
        const QPointF at = (canvas.topLeft() + QPointF(x, 700) * canvas.width() / 320) * seen.devicePixelRatio();
        unlike += std::abs(qGray(seen.pixel(at.toPoint())) - qGray(picture.pixel(400 + x, 700))) > 24;
    }
    QVERIFY2(unlike < 3, qPrintable(QString::number(unlike)));

    QVERIFY(context.values().write(id, QStringLiteral("BinningHorizontal"), QStringLiteral("2")));
    QVERIFY(context.panelRegions().draw(id, {10, 10}, {20, 20}));
    QVERIFY(window.image().isCanvas());
    context.sessions().close(id);
    QTRY_VERIFY(window.image().imageSize().isEmpty());
    QCOMPARE(window.image().regions().selected(), 0);
}

QTEST_MAIN(tst_ImageView)
#include "tst_ImageView.moc"
