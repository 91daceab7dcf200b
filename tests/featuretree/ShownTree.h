// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QPushButton>

#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeModel.h"
#include "FindRow.h"
#include "TestCamera.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"
#include "support/Input.h"

/// The tree of a TestCamera, unfolded, with the level Beginner; unexpected warnings fail the test.
class ShownTree
{
protected:
    /// With TestCamera::pokeValues(), or with a width of 48 alone.
    void make(bool hasValues = false)
    {
        close();
        FakeHostCore::instance().reset();
        m_messages = std::make_unique<FatalMessages>();
        m_camera = std::make_unique<TestCamera>();
        m_camera->port.poke(TestCamera::Width, 48);
        if (hasValues)
            m_camera->pokeValues();
        m_camera->port.poke(TestCamera::Switch, 1);
        m_model = std::make_unique<TreeModel>(QStringList{QStringLiteral("Feature"), QStringLiteral("Value")},
                                              m_camera->nodes());
        m_model->AddModelData(m_camera->nodes(), QString());
        m_view = std::make_unique<FeatureTreeView>();
        m_view->deviceName = QStringLiteral("cam");
        m_view->setModel(m_model.get());
        m_view->resize(600, 1200);
        m_view->expandAll();
        m_view->SetFilter(0, QString());
    }

    /// The same in the active window, which is `window`, or the tree itself.
    void show(QWidget *window = nullptr)
    {
        QVERIFY(activate(window ? *window : *m_view));
        m_camera->port.resetCounters();
    }

    void open()
    {
        make();
        show();
    }

    void close()
    {
        m_view.reset();
        m_model.reset();
        m_camera.reset();
        m_messages.reset();
    }

    QModelIndex cell(const char *name, int column = 1) const { return findRow(*m_model, name, column); }

    bool isShown(const char *name) const
    {
        QModelIndex index = cell(name, 0);
        while (index.isValid() && !m_view->isRowHidden(index.row(), index.parent()))
            index = index.parent();
        return !index.isValid();
    }

    void click(const char *name, int column = 1)
    {
        const QModelIndex index = cell(name, column);
        m_view->scrollTo(index);
        const QRect rect = m_view->visualRect(index);
        QVERIFY2(rect.isValid(), name);
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
    }

    /// What has the focus, if it is of this kind.
    template <class Editor>
    Editor *editor() const
    {
        return qobject_cast<Editor *>(QApplication::focusWidget());
    }

    QPushButton *openCommand(const char *name)
    {
        click(name);
        return editor<QPushButton>();
    }

    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<TreeModel> m_model;
    std::unique_ptr<FeatureTreeView> m_view;
};
