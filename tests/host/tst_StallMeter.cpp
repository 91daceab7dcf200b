// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Viewer/MeteredApplication.h"

namespace {

void work(int milliseconds)
{
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < milliseconds;) { }
}

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

class tst_StallMeter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void measuresTheLongestStretchOfAnEvent()
    {
        const struct
        {
            const char *what;
            std::function<void()> event;
            double atLeast, atMost; ///< ms
        } rows[] = {{"work", [] { work(60); }, 60, 110},
                    {"work in a call of another handler",
                     [] {
                         work(30);
                         QObject other;
                         connect(&other, &QObject::objectNameChanged, &other, [] { work(30); });
                         other.setObjectName(QStringLiteral("x"));
                     },
                     60, 110},
                    {"a loop that waits", [] { wait(200); }, 0, 50},
                    {"work before and behind a loop",
                     [] {
                         work(60);
                         wait(200);
                         work(60);
                     },
                     60, 110},
                    {"work in a loop that another event runs",
                     [] {
                         QTimer::singleShot(0, qApp, [] { work(60); });
                         wait(200);
                     },
                     60, 110},
                    {"events handled by the way",
                     [] {
                         work(60);
                         QCoreApplication::processEvents();
                         work(60);
                     },
                     60, 110}};
        for (const auto &row : rows) {
            double longest = measured(row.event);
            for (int i = 0; i < 3 && longest >= row.atMost; ++i) // the machine may be busy
                longest = measured(row.event);
            const QByteArray told = QByteArray(row.what) + ": " + QByteArray::number(longest);
            QVERIFY2(longest >= row.atLeast && longest < row.atMost, told);
        }
    }

private:
    static double measured(const std::function<void()> &event)
    {
        bool done = false;
        MeteredApplication::meter()->restart();
        QTimer::singleShot(0, qApp, [&] {
            event();
            done = true;
        });
        while (!done)
            wait(1);
        return MeteredApplication::meter()->longest();
    }
};

int main(int argc, char **argv)
{
    MeteredApplication application(argc, argv);
    tst_StallMeter test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_StallMeter.moc"
