// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QSignalSpy>

#include "Editors.h"
#include "support/FakeHostCore.h"
#include "support/Input.h"
#include "support/Rows.h"

using Row = ToolPageWidgetItem;

/// For tests of what rows write: a row of a camera that is edited with the mouse and the keyboard.
class EditedRow : public QObject
{
protected:
    void setUp()
    {
        tearDown();
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
        m_row = rowOf(*m_camera, nodeName);
        if (!activate(*m_row))
            return nullptr;
        m_row->findChild<Editor *>()->setFocus();
        m_written = std::make_unique<QSignalSpy>(m_row.get(), &Row::valueChanged);
        m_camera->port.resetCounters();
        return m_row->findChild<Editor *>();
    }

    static void type(QWidget *editor, const QString &text)
    {
        editor->setFocus();
        editor->findChild<QLineEdit *>()->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
    }
    static void typeHalf(QAbstractSpinBox *spinBox, const char *text)
    {
        spinBox->selectAll();
        QTest::keyClick(spinBox, Qt::Key_Delete);
        QTest::keyClicks(spinBox, QLatin1String(text));
    }

    double gain() const { return GenApi::CFloatPtr(m_camera->node("Gain"))->GetValue(true, true); }
    static QStringList log() { return FakeHostCore::instance().callsTo(QStringLiteral("VLogInfo")); }
    static QString line(const QString &message)
    {
        return QStringLiteral("VLogInfo(ToolPageWidgetItem, %1, 0)").arg(message);
    }

    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<Row> m_row;
    std::unique_ptr<QSignalSpy> m_written;
};
