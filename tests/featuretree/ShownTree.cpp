// SPDX-License-Identifier: MIT
#include "ShownTree.h"

#include <QPushButton>
#include <QtTest>

void ShownTree::open()
{
    close();
    FakeHostCore::instance().reset();
    messages = std::make_unique<FatalMessages>();
    camera = std::make_unique<TestCamera>();
    camera->port.poke(TestCamera::Width, 48);
    camera->port.poke(TestCamera::Switch, 1);
    model =
        std::make_unique<TreeModel>(QStringList{QStringLiteral("Feature"), QStringLiteral("Value")}, camera->nodes());
    model->AddModelData(camera->nodes(), QString());
    view = std::make_unique<FeatureTreeView>();
    view->deviceName = QStringLiteral("cam");
    view->setModel(model.get());
    view->resize(600, 1200);
    view->expandAll();
    view->SetFilter(0, QString());
    view->show();
    QVERIFY(QTest::qWaitForWindowActive(view.get()));
    camera->port.resetCounters();
}

void ShownTree::close()
{
    view.reset();
    model.reset();
    camera.reset();
    messages.reset();
}

bool ShownTree::isShown(const char *name) const
{
    for (QModelIndex index = cell(name, 0); index.isValid(); index = index.parent()) {
        if (view->isRowHidden(index.row(), index.parent()))
            return false;
    }
    return true;
}

void ShownTree::click(const char *name, int column)
{
    const QModelIndex index = cell(name, column);
    view->scrollTo(index);
    const QRect rect = view->visualRect(index);
    QVERIFY2(rect.isValid(), name);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

QPushButton *ShownTree::openCommand(const char *name)
{
    click(name);
    return editor<QPushButton>();
}
