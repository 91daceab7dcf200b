// SPDX-License-Identifier: MIT
#include <QWindow>
#include <QtTest>

#include <algorithm>

#include "Viewer/ImageView.h"
#include "Viewer/ViewerWindow.h"
#include "host/TestHost.h"
#include "support/BracketTranslator.h"

namespace {

const QString Camera = QStringLiteral("camera");
const QSize ImageSize(800, 600);
const QSize ViewSize(400, 300); ///< two image pixels per view pixel
const QRect Drawn(200, 150, 400, 300);

QImage plainImage(Qt::GlobalColor colour)
{
    QImage image(ImageSize, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

} // namespace

/// Regions under the mouse and the keyboard.
class tst_ImageView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_regions = std::make_unique<ImageRegions>();
        m_view = std::make_unique<ImageView>();
        m_reports = std::make_unique<QSignalSpy>(m_regions.get(), &ImageRegions::movedByUser);
        m_view->resize(ViewSize);
        m_view->showFrame(plainImage(Qt::black));
        m_view->regions().edit(*m_regions, Camera);
        m_view->show();
        m_view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    }

    void dragging()
    {
        const QPoint usual(10, -6);
        const std::tuple<const char *, QPoint, QPoint, QRect> rows[] = {
            {"body", {200, 150}, usual, {220, 138, 400, 300}},
            {"left", {100, 150}, usual, {220, 150, 380, 300}},
            {"top", {200, 75}, usual, {200, 138, 400, 312}},
            {"top right", {300, 75}, usual, {200, 138, 420, 312}},
            {"bottom left", {100, 225}, usual, {220, 150, 380, 288}},
            {"just outside of an edge", {305, 150}, usual, {200, 150, 420, 300}},
            {"body beyond the image", {200, 150}, {-190, 149}, {0, 300, 400, 300}},
            {"corner beyond the image", {300, 225}, {99, 74}, {200, 150, 598, 448}},
            {"edges meet", {300, 225}, {-250, -200}, {200, 150, 1, 1}},
            {"edge beyond its opposite", {100, 150}, {290, 0}, {599, 150, 1, 300}},
            {"beside", {50, 50}, usual, Drawn},
        };
        for (const auto &[name, from, way, result] : rows) {
            const int handle = draw(Drawn);
            m_reports->clear();
            press(from);
            moveTo(from);
            QVERIFY2(m_reports->isEmpty(), name);
            moveTo(from + way);
            moveTo(from + way);
            release(from + way);
            moveTo(from);
            QVERIFY2(area(handle) == result, name);
            QVERIFY2(m_reports->size() == (result == Drawn ? 0 : 1), name);
            m_regions->remove(Camera, handle);
        }
    }

    void dragsFollowTheZoom()
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

    void escapeAndRemovalEndADrag()
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

        const int other = draw(QRect(0, 0, 50, 50));
        m_reports->clear();
        press({200, 150});
        m_regions->remove(Camera, handle);
        moveTo({230, 170});
        release({230, 170});
        QCOMPARE(area(other), QRect(0, 0, 50, 50));
        QVERIFY(m_reports->isEmpty());
    }

    void keysMoveTheSelectedRegion()
    {
        const std::tuple<const char *, Qt::Key, Qt::KeyboardModifiers, QRect> rows[] = {
            {"left", Qt::Key_Left, {}, Drawn.translated(-1, 0)},
            {"down by ten", Qt::Key_Down, Qt::ShiftModifier, Drawn.translated(0, 10)},
            {"wider", Qt::Key_Right, Qt::ControlModifier, {200, 150, 401, 300}},
            {"lower by ten", Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier, {200, 150, 400, 290}},
        };
        const int other = draw(Drawn);
        for (const auto &[name, key, modifiers, result] : rows) {
            const int handle = draw(Drawn);
            m_reports->clear();
            QTest::keyClick(m_view.get(), key, modifiers);
            QVERIFY2(area(handle) == result, name);
            QVERIFY2(m_reports->size() == 1, name);
        }
        QCOMPARE(area(other), Drawn);
    }

    void cursorTellsThePart()
    {
        const std::tuple<QRect, QPoint, Qt::CursorShape> rows[] = {
            {Drawn, {50, 50}, Qt::ArrowCursor},
            {Drawn, {200, 150}, Qt::SizeAllCursor},
            {Drawn, {99, 150}, Qt::SizeHorCursor},
            {Drawn, {150, 226}, Qt::SizeVerCursor},
            {Drawn, {102, 77}, Qt::SizeFDiagCursor},
            {Drawn, {102, 226}, Qt::SizeBDiagCursor},
            {{400, 300, 10, 10}, {202, 152}, Qt::SizeAllCursor}, // a small one is all body
        };
        for (const auto &[region, at, cursor] : rows) {
            const int handle = draw(region);
            moveTo(at);
            QCOMPARE(m_view->cursor().shape(), cursor);
            m_regions->remove(Camera, handle);
        }
    }

    void besideARegionTheImagePans()
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

    void selectsByClickAndTab()
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

    void otherButtonsLeaveADragAlone()
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

    void doubleClickZoomsBesideRegions()
    {
        draw(Drawn);
        for (const QPoint &at : {QPoint(200, 150), QPoint(50, 50)}) {
            QTest::mouseDClick(m_view->windowHandle(), Qt::LeftButton, {}, at);
            QCOMPARE(m_view->isFitted(), at.x() == 200);
        }
    }

    void linesShowOnEveryImage()
    {
        m_view->clearFocus();
        for (const QRect &region : {Drawn, QRect(QPoint(), ImageSize)}) {
            const int handle = draw(region);
            for (const Qt::GlobalColor colour : {Qt::black, Qt::white}) {
                m_view->showStill(plainImage(colour));
                const QImage painted = m_view->grab().toImage();
                const QRectF edge(onView(region.topLeft()), onView(region.bottomRight()));
                const int y = int((edge.top() + edge.height() / 4) * painted.devicePixelRatio());
                for (const double side : {edge.left(), edge.right()}) {
                    const int x = int(side * painted.devicePixelRatio());
                    QSet<int> grays;
                    for (int beside = qMax(0, x - 8); beside < qMin(painted.width(), x + 8); ++beside)
                        grays << qGray(painted.pixel(beside, y));
                    const auto [least, most] = std::minmax_element(grays.begin(), grays.end());
                    QVERIFY2(*most - *least > 150, qPrintable(QString::number(*most - *least)));
                }
            }
            m_regions->remove(Camera, handle);
        }
    }

    /// Each kind of region has a name, which is translated, and a colour.
    void regionsAreToldApart()
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
        QCOMPARE(labels,
                 QString::fromUtf8("60 × 40|[Measure range: 60 × 40]|[Mask 2: 60 × 40]").split(QLatin1Char('|')));
        QCOMPARE(colours.size(), 3);
    }

    /// Of four regions at the same place; none hides a grip.
    void namesAreLegible()
    {
        const QRectF seen(0, 0, 600, 300);
        for (const QRectF &region : {QRectF(200, 150, 200, 90), QRectF(0, 0, 30, 30), seen, QRectF(-50, -50, 800, 400),
                                     QRectF(570, 10, 30, 290)}) {
            std::vector<QRectF> taken = regionGrips(region, seen);
            for (int label = 0; label < 4; ++label) {
                const QRectF place = labelPlace({150, 24}, region, seen, taken);
                QVERIFY(seen.contains(place));
                for (const QRectF &other : taken)
                    QVERIFY2(!other.intersects(place), qPrintable(QString::number(region.x())));
                taken.push_back(place);
            }
        }
    }

    void canvasStandsForAMissingPicture()
    {
        TestHost host;
        host.renewSimulated();
        HostContext &context = *host;
        ViewerWindow window(context);
        const char *const camera = "SIM-AREA-01";
        const QString id = text(camera);
        window.openWhenKnown(id);
        QTRY_VERIFY(context.devices().isReady(id));
        const QSize whole(int(host.number(camera, "Width")), int(host.number(camera, "Height")));
        int handle = context.panelRegions().draw(id, {0, 0}, {whole.width(), whole.height()});
        QVERIFY(window.image().isCanvas());
        QCOMPARE(window.image().imageSize(), whole);

        QVERIFY(context.sessions().startAcquisition(id));
        QTRY_VERIFY(!window.image().isCanvas());
        context.sessions().stopAcquisition(id);
        QCoreApplication::processEvents(); // a frame that was on its way
        QVERIFY(!window.image().isCanvas());
        context.panelRegions().remove(id, handle);

        host.set(camera, "Width=320");
        handle = context.panelRegions().draw(id, {10, 10}, {20, 20});
        QVERIFY(window.image().isCanvas());
        QCOMPARE(window.image().imageSize(), QSize(320, whole.height()));
        context.panelRegions().remove(id, handle);
        QCOMPARE(window.image().frame().size(), whole);

        // What the last picture shows stays where it is on the sensor.
        host.set(camera, "OffsetX=400");
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

        host.set(camera, "BinningHorizontal=2");
        QVERIFY(context.panelRegions().draw(id, {10, 10}, {20, 20}));
        QVERIFY(window.image().isCanvas());
        context.sessions().close(id);
        QTRY_VERIFY(window.image().imageSize().isEmpty());
        QCOMPARE(window.image().regions().selected(), 0);
    }

private:
    int draw(const QRect &wanted)
    {
        return m_regions->draw(Camera, ImageSize, wanted.topLeft(), wanted.bottomRight() + QPoint(1, 1));
    }

    QRect area(int handle) const { return m_regions->region(handle).area; }

    QPoint onView(const QPoint &pixel) const
    {
        return (m_view->imageRect().topLeft() + QPointF(pixel) * scale()).toPoint();
    }

    /// View pixels per image pixel.
    double scale() const { return m_view->zoom() / m_view->devicePixelRatioF(); }
    void press(const QPoint &at) { QTest::mousePress(m_view->windowHandle(), Qt::LeftButton, {}, at); }
    void moveTo(const QPoint &at) { QTest::mouseMove(m_view->windowHandle(), at); }
    void release(const QPoint &at) { QTest::mouseRelease(m_view->windowHandle(), Qt::LeftButton, {}, at); }

    void drag(const QPoint &from, const QPoint &way)
    {
        press(from);
        moveTo(from + way);
        release(from + way);
    }

    std::unique_ptr<ImageRegions> m_regions;
    std::unique_ptr<ImageView> m_view;
    std::unique_ptr<QSignalSpy> m_reports;
};

QTEST_MAIN(tst_ImageView)
#include "tst_ImageView.moc"
