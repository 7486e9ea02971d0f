// The mouse events of the window layer's pictures and labels, in-process on
// the offscreen platform: which handlers a single and a double click run, in
// which order, also when a Click handler waits in an event loop of its own
// for the second click, as the board does.

#include "ui/Controls.h"

#include "shell/Clock.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <QStyleHints>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

// Failures show the handlers that ran.
void PrintTo(const QStringList& list, std::ostream* out)
{
    *out << '[' << list.join(QStringLiteral(", ")).toStdString() << ']';
}

namespace {

const QStringList DoubleClick{"down 1 450 300", "click", "down 1 450 300", "dbl"};
const QStringList SingleClick{"down 1 450 300", "click"};

void PumpFor(int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

bool PumpUntil(const std::function<bool()>& done, int ms = 5000)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > ms)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

class ControlsMouseTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        window = std::make_unique<QWidget>();
        window->resize(400, 300);
        image = new vk::ImageControl(window.get(), QStringLiteral("imgTest"), true);
        image->Move(1500, 1500, 900, 600);
        label = new vk::LabelControl(window.get(), QStringLiteral("lblTest"), QStringLiteral("bord"));
        label->Move(1500, 3000, 900, 600);
        Record(image->Mouse);
        Record(label->Mouse);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    void TearDown() override { window.reset(); }

    // Each handler writes down that it ran; MouseDown with button and point.
    void Record(vk::MouseHandlers& mouse)
    {
        mouse.MouseDown = [this](int button, int x, int y) {
            seen << QStringLiteral("down %1 %2 %3").arg(button).arg(x).arg(y);
        };
        mouse.Click = [this] { seen << QStringLiteral("click"); };
        mouse.DblClick = [this] {
            seen << QStringLiteral("dbl");
            secondClickSeen = true;
            if (waitingForSecondClick)
                ++secondClicksInsideWait;
        };
    }

    // A Click that then waits, pumping events, until the second click comes
    // or the double-click time (with a margin) has passed; wait gives the
    // longest wait in milliseconds.
    void ClickWaitsForSecondClick(vk::MouseHandlers& mouse, int wait)
    {
        mouse.Click = [this, wait] {
            seen << QStringLiteral("click");
            secondClickSeen = false;
            QEventLoop loop;
            QTimer timeout;
            timeout.setSingleShot(true);
            QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
            QTimer check;
            QObject::connect(&check, &QTimer::timeout, &loop, [&] {
                if (secondClickSeen)
                    loop.quit();
            });
            timeout.start(wait);
            check.start(1);
            waitingForSecondClick = true;
            loop.exec();
            waitingForSecondClick = false;
        };
    }

    // The centre of a control in the coordinates of its window.
    QPoint CentreInWindow(QWidget* control) const
    {
        return control->mapTo(window.get(), QPoint(control->width() / 2, control->height() / 2));
    }

    // Press, release, double-click event and release, as Qt hands a widget a
    // person's double click; the second press comes 30 ms after the first
    // release, as a person's would, while a Click that waits still waits.
    static void PostDoubleClickEvents(QWidget* widget, QPointF at, Qt::MouseButton button)
    {
        const QPointF global = widget->mapToGlobal(at);
        QCoreApplication::postEvent(widget, new QMouseEvent(QEvent::MouseButtonPress, at, global, button, button,
                                                            Qt::NoModifier));
        QCoreApplication::postEvent(widget, new QMouseEvent(QEvent::MouseButtonRelease, at, global, button,
                                                            Qt::NoButton, Qt::NoModifier));
        QTimer::singleShot(30, widget, [widget, at, global, button] {
            QCoreApplication::postEvent(widget, new QMouseEvent(QEvent::MouseButtonDblClick, at, global, button,
                                                                button, Qt::NoModifier));
            QCoreApplication::postEvent(widget, new QMouseEvent(QEvent::MouseButtonRelease, at, global, button,
                                                                Qt::NoButton, Qt::NoModifier));
        });
    }

    std::unique_ptr<QWidget> window;
    vk::ImageControl* image = nullptr;
    vk::LabelControl* label = nullptr;
    QStringList seen;
    bool secondClickSeen = false;
    bool waitingForSecondClick = false;
    int secondClicksInsideWait = 0;
};

TEST_F(ControlsMouseTest, DoubleClickThroughTheWindowIsDownClickDownDblClick)
{
    // Through the window system layer, where Qt itself turns the second press
    // into a double-click event.
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, CentreInWindow(image));
    PumpFor(50);
    EXPECT_EQ(seen, DoubleClick);
}

TEST_F(ControlsMouseTest, SingleClickThroughTheWindowIsDownClick)
{
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, CentreInWindow(image));
    PumpFor(50);
    EXPECT_EQ(seen, SingleClick);
}

TEST_F(ControlsMouseTest, DoubleClickEventsAsQtHandsThemToTheWidget)
{
    const QPointF centre(30, 20);
    for (QWidget* target : {static_cast<QWidget*>(image), static_cast<QWidget*>(label)}) {
        seen.clear();
        const QPointF global = target->mapToGlobal(centre);
        QMouseEvent press(QEvent::MouseButtonPress, centre, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QMouseEvent release(QEvent::MouseButtonRelease, centre, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QMouseEvent second(QEvent::MouseButtonDblClick, centre, global, Qt::LeftButton, Qt::LeftButton,
                           Qt::NoModifier);
        QMouseEvent lastRelease(QEvent::MouseButtonRelease, centre, global, Qt::LeftButton, Qt::NoButton,
                                Qt::NoModifier);
        QCoreApplication::sendEvent(target, &press);
        QCoreApplication::sendEvent(target, &release);
        QCoreApplication::sendEvent(target, &second);
        QCoreApplication::sendEvent(target, &lastRelease);
        EXPECT_EQ(seen, DoubleClick) << target->objectName().toStdString();

        // A click after the double click is a click again.
        seen.clear();
        QMouseEvent press2(QEvent::MouseButtonPress, centre, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QMouseEvent release2(QEvent::MouseButtonRelease, centre, global, Qt::LeftButton, Qt::NoButton,
                             Qt::NoModifier);
        QCoreApplication::sendEvent(target, &press2);
        QCoreApplication::sendEvent(target, &release2);
        EXPECT_EQ(seen, SingleClick) << target->objectName().toStdString();
    }
}

TEST_F(ControlsMouseTest, ClickThatWaitsForTheSecondClickThroughTheWindow)
{
    // Qt's test input arrives one event after the other, so the Click's wait
    // runs out before the second press: the order stays the same.
    ClickWaitsForSecondClick(image->Mouse, 100);
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, CentreInWindow(image));
    PumpFor(50);
    EXPECT_EQ(seen, DoubleClick);
}

TEST_F(ControlsMouseTest, SecondPressArrivesInsideTheWaitOfTheClick)
{
    // The second press and its release come up while the Click's handler
    // pumps events.
    ClickWaitsForSecondClick(image->Mouse, 100);
    PostDoubleClickEvents(image, QPointF(30, 20), Qt::LeftButton);
    ASSERT_TRUE(PumpUntil([this] { return seen.size() >= 4; }));
    PumpFor(150);
    EXPECT_EQ(seen, DoubleClick);
    EXPECT_EQ(secondClicksInsideWait, 1);
}

TEST_F(ControlsMouseTest, RightDoubleClickIsTwoMouseDowns)
{
    PostDoubleClickEvents(image, QPointF(30, 20), Qt::RightButton);
    PumpFor(100);
    EXPECT_EQ(seen, (QStringList{"down 2 450 300", "down 2 450 300"}));
}

TEST_F(ControlsMouseTest, PostedGesturesRunTheSameHandlers)
{
    vk::PostMouseGesture(image, vk::MouseGesture::DoubleClick, 1, 450, 300);
    ASSERT_TRUE(PumpUntil([this] { return seen.size() >= 4; }));
    PumpFor(50);
    EXPECT_EQ(seen, DoubleClick);

    seen.clear();
    vk::PostMouseGesture(label, vk::MouseGesture::Click, 1, 450, 300);
    PumpFor(50);
    EXPECT_EQ(seen, SingleClick);

    // A press alone, with any button; a point between two pixels keeps its twips.
    seen.clear();
    vk::PostMouseGesture(image, vk::MouseGesture::Press, 2, 7, 599);
    vk::PostMouseGesture(image, vk::MouseGesture::Press, 4, 0, 0);
    PumpFor(50);
    EXPECT_EQ(seen, (QStringList{"down 2 7 599", "down 4 0 0"}));

    // The last twip of the picture is still inside it.
    seen.clear();
    vk::PostMouseGesture(image, vk::MouseGesture::Click, 1, 899, 599);
    PumpFor(50);
    EXPECT_EQ(seen, (QStringList{"down 1 899 599", "click"}));
}

TEST_F(ControlsMouseTest, PostedDoubleClickReachesAClickThatWaits)
{
    ClickWaitsForSecondClick(image->Mouse, 100);
    vk::PostMouseGesture(image, vk::MouseGesture::DoubleClick, 1, 450, 300);
    ASSERT_TRUE(PumpUntil([this] { return seen.size() >= 4; }));
    PumpFor(150);
    EXPECT_EQ(seen, DoubleClick);
    EXPECT_EQ(secondClicksInsideWait, 1);
}

TEST_F(ControlsMouseTest, PostedDoubleClickReachesAClickThatPumpsBesideATimer)
{
    // The board's wait: a timer control of the double-click time and a fifth,
    // and the game's own pump until the timer fires or the DblClick has run.
    vk::TimerControl timer(window.get(), QStringLiteral("tmrTest"),
                           QGuiApplication::styleHints()->mouseDoubleClickInterval() * 12 / 10);
    bool timerFired = false;
    timer.Timer = [&] {
        timerFired = true;
        timer.SetEnabled(false);
    };
    image->Mouse.Click = [&] {
        seen << QStringLiteral("click");
        secondClickSeen = false;
        timerFired = false;
        timer.SetEnabled(true);
        waitingForSecondClick = true;
        for (;;) {
            vk::PumpInterface();
            if (timerFired || secondClickSeen)
                break;
            vk::PumpInterfaceWaiting(100);
        }
        waitingForSecondClick = false;
    };
    vk::PostMouseGesture(image, vk::MouseGesture::DoubleClick, 1, 450, 300);
    ASSERT_TRUE(PumpUntil([this] { return seen.size() >= 4; }));
    PumpFor(50);
    EXPECT_EQ(seen, DoubleClick);
    EXPECT_EQ(secondClicksInsideWait, 1);
    EXPECT_FALSE(timerFired);
}

TEST_F(ControlsMouseTest, PostedGestureStopsWhenTheControlIsHidden)
{
    // The Click hides the picture: the second press finds nothing to press on.
    image->Mouse.Click = [this] {
        seen << QStringLiteral("click");
        image->SetVisible(false);
    };
    vk::PostMouseGesture(image, vk::MouseGesture::DoubleClick, 1, 450, 300);
    PumpFor(100);
    EXPECT_EQ(seen, SingleClick);

    // Disabled, nothing at all.
    seen.clear();
    image->SetVisible(true);
    image->SetEnabled(false);
    vk::PostMouseGesture(image, vk::MouseGesture::Click, 1, 450, 300);
    PumpFor(50);
    EXPECT_TRUE(seen.isEmpty()) << seen.join(',').toStdString();
}

TEST_F(ControlsMouseTest, PostedGestureGoesWithItsControl)
{
    vk::PostMouseGesture(image, vk::MouseGesture::DoubleClick, 1, 450, 300);
    delete image;
    image = nullptr;
    PumpFor(50);
    EXPECT_TRUE(seen.isEmpty()) << seen.join(',').toStdString();
}

TEST_F(ControlsMouseTest, PostedGestureComesBeforeWorkAlreadyWaiting)
{
    // Work queued before the gesture (as the automation's next request is)
    // runs after the whole double click when no handler waits.
    QTimer::singleShot(0, window.get(), [this] {
        QTimer::singleShot(0, window.get(), [this] { seen << QStringLiteral("queued"); });
        vk::PostMouseGesture(image, vk::MouseGesture::DoubleClick, 1, 450, 300);
    });
    ASSERT_TRUE(PumpUntil([this] { return seen.size() >= 5; }));
    EXPECT_EQ(seen, DoubleClick + QStringList{"queued"});
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
