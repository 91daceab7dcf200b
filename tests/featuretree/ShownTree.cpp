// SPDX-License-Identifier: MIT
#include "ShownTree.h"

#include <QPushButton>
#include <QtTest>

void ShownTree::open()
{
    close();
    FakeHostCore::instance().reset();
    m_messages = std::make_unique<FatalMessages>();
    m_camera = std::make_unique<TestCamera>();
    m_camera->port.poke(TestCamera::Width, 48);
    m_camera->port.poke(TestCamera::Switch, 1);
    m_model =
        std::make_unique<TreeModel>(QStringList{QStringLiteral("Feature"), QStringLiteral("Value")}, m_camera->nodes());
    m_model->AddModelData(m_camera->nodes(), QString());
    m_view = std::make_unique<FeatureTreeView>();
    m_view->deviceName = QStringLiteral("cam");
    m_view->setModel(m_model.get());
    m_view->resize(600, 1200);
    m_view->expandAll();
    m_view->SetFilter(0, QString());
    m_view->show();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    m_camera->port.resetCounters();
}

void ShownTree::close()
{
    m_view.reset();
    m_model.reset();
    m_camera.reset();
    m_messages.reset();
}

bool ShownTree::isShown(const char *name) const
{
    for (QModelIndex index = cell(name, 0); index.isValid(); index = index.parent()) {
        if (m_view->isRowHidden(index.row(), index.parent()))
            return false;
    }
    return true;
}

void ShownTree::click(const char *name, int column)
{
    const QModelIndex index = cell(name, column);
    m_view->scrollTo(index);
    const QRect rect = m_view->visualRect(index);
    QVERIFY2(rect.isValid(), name);
    QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

QPushButton *ShownTree::openCommand(const char *name)
{
    click(name);
    return editor<QPushButton>();
}
