// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <memory>

#include "TestCamera.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"

/// For tests of what rows write: a row of a camera that is edited with the mouse and the keyboard.
class EditedRow : public QObject
{
protected:
    void setUp()
    {
        FakeHostCore::instance().reset();
        m_camera = std::make_unique<TestCamera>();
        m_camera->port.poke(TestCamera::Width, 48);
        m_camera->port.pokeDouble(TestCamera::Gain, 2.5);
    }

    void tearDown()
    {
        m_written.reset();
        m_row.reset();
        m_camera.reset();
    }

    /// The editor of a new row, shown in an active window.
    template <class Editor>
    Editor *editorOf(const char *nodeName)
    {
        m_row = std::make_unique<ToolPageWidgetItem>();
        m_row->setItemInfo({}, {}, m_camera->node(nodeName), true);
        m_row->show();
        QApplication::setActiveWindow(m_row.get());
        if (!QTest::qWaitForWindowActive(m_row.get()))
            return nullptr;
        m_row->findChild<Editor *>()->setFocus();
        m_written = std::make_unique<QSignalSpy>(m_row.get(), &ToolPageWidgetItem::valueChanged);
        m_camera->port.resetCounters();
        return m_row->findChild<Editor *>();
    }

    static void type(QWidget *editor, const QString &text)
    {
        editor->findChild<QLineEdit *>()->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
    }

    static QStringList log() { return FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")); }

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<ToolPageWidgetItem> m_row;
    std::unique_ptr<QSignalSpy> m_written;
};
