// SPDX-License-Identifier: MIT
#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>

#include "FeatureTree/FeatureTreeView.h"
#include "ManagerFixture.h"
#include "ParamterWidget/ScrollReturn.h"
#include "ToolPage/CToolPage.h"

/// Where a person is in a panel, across the loss of its device.
class tst_PanelPlace : public ManagerFixture
{
    Q_OBJECT

private Q_SLOTS:
    /// The one that was lost comes back as it was; one that was closed starts anew.
    void devicesThatReturn()
    {
        for (const auto &[name, returns, language] :
             {std::tuple("lost", true, "English"), std::tuple("lost, Chinese", true, "Chinese"),
              std::tuple("closed", false, "English")}) {
            const InRow inRow(name);
            end();
            start();
            m_window->resize(400, 300);
            m_host.listeners.language->OnUpdate(language);
            m_window->setProperty("returningDevices", returns ? QStringList("cam"_s) : QStringList());
            open();
            arrange();
            const QScrollBar *bar = tree()->verticalScrollBar();
            QVERIFY2(bar->maximum() > 1 && bar->value() == 1, "the tree is not scrolled");

            setCamera("cam", false);
            sendDeviceList({}, {"cam"});
            QTRY_COMPARE(panels().size(), 1);
            open();
            QCOMPARE(child<QTabWidget>("tabMainWidget")->currentIndex(), returns ? 1 : 0);
            QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), returns ? 1 : 0);
            QCOMPARE(firstGroup()->isExpanded(), !returns);
            QCOMPARE(child<QLineEdit>("edit_search")->text(), returns ? "e"_s : QString());
            QCOMPARE(tree()->currentIndex() == row("Acquisition/Name"), returns);
            QVERIFY(!tree()->isExpanded(row("Analog")));
            QCOMPARE(tree()->isExpanded(row("ImageFormat")), returns);
            bar = tree()->verticalScrollBar();
            if (returns)
                QTRY_COMPARE(bar->value(), 1);
        }
        end();
    }

    /// The range of a tree grows as its rows come; what a person does meanwhile counts more.
    void scrollPositionsFollowTheRange()
    {
        for (const bool scrolls : {false, true}) {
            QScrollBar bar;
            bar.setRange(0, 0);
            new ScrollReturn(&bar, 50);
            for (const int maximum : {10, 5, 30}) {
                bar.setMaximum(maximum);
                QCOMPARE(bar.value(), maximum);
            }
            if (scrolls)
                bar.setValue(20);
            bar.setMaximum(100);
            QCOMPARE(bar.value(), scrolls ? 20 : 50);
            bar.setMaximum(40);
            bar.setMaximum(100);
            QCOMPARE(bar.value(), scrolls ? 20 : 40); // it has been there
        }
    }

private:
    void open()
    {
        setCamera("cam", true);
        sendDeviceList({}, {"cam"});
        sendFocus(3, "cam");
    }
    void arrange() const
    {
        child<QTabWidget>("tabMainWidget")->setCurrentIndex(1);
        child<QTabWidget>("tabWidget")->setCurrentIndex(1);
        firstGroup()->collapse();
        child<QLineEdit>("edit_search")->setText("e"_s);
        tree()->setCurrentIndex(row("Acquisition/Name"));
        tree()->collapse(row("Analog"));
        QCoreApplication::processEvents();
        tree()->verticalScrollBar()->setValue(1);
    }

    template <class Widget>
    Widget *child(const char *name) const
    {
        return panelOf("cam")->findChild<Widget *>(QString::fromLatin1(name));
    }
    FeatureTreeView *tree() const { return child<FeatureTreeView>("widget_featrue"); }
    CToolPage *firstGroup() const { return child<QWidget>("firstToolBox")->findChild<CToolPage *>(); }
    QModelIndex row(const char *path) const
    {
        QModelIndex index = tree()->model()->index(0, 0);
        for (const QString &name : words(path, '/'))
            index = tree()->model()->match(index.model()->index(0, 0, index), Qt::EditRole, name, 1).value(0);
        return index;
    }
};

QTEST_MAIN(tst_PanelPlace)
#include "tst_PanelPlace.moc"
