#pragma once

// The window layer: every named control of the main window is a real Qt widget
// (or, for timers, a QObject) whose objectName is the control's name, and which
// speaks the words the game logic uses: Left, Top, Width and Height in twips,
// Visible, Enabled, Caption, Tag, BackColor as a colour number with red in the
// low byte, Picture by path, timers with Interval and Enabled.

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace vk {

constexpr int TwipsPerPixel = 15;

inline int TwipsToPixels(int twips) { return twips / TwipsPerPixel; }
inline int PixelsToTwips(int pixels) { return pixels * TwipsPerPixel; }

enum class ControlKind { Form, Frame, Panel, Button, CheckBox, ComboBox, TextBox, Label, Image, Shape, Timer };

// The kind as the automation interface names it ("form", "frame", ...).
const char* KindName(ControlKind kind);

// The colour numbers the game paints its state with.
inline constexpr int Red = 255;
inline constexpr int Green = 65280;

// A colour number of the design (0x00BBGGRR) as a Qt colour.
QColor ColorFromNumber(int number);

class Control {
public:
    explicit Control(ControlKind kind) : kind_(kind) {}
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    virtual QObject* Object() = 0;
    const QObject* Object() const { return const_cast<Control*>(this)->Object(); }
    QWidget* Widget() { return qobject_cast<QWidget*>(Object()); }
    const QWidget* Widget() const { return const_cast<Control*>(this)->Widget(); }

    ControlKind Kind() const { return kind_; }
    QString Name() const { return Object()->objectName(); }

    // Position and size in twips, relative to the container.
    int Left() const { return left_; }
    int Top() const { return top_; }
    int Width() const { return width_; }
    int Height() const { return height_; }
    void SetLeft(int twips) { Move(twips, top_, width_, height_); }
    void SetTop(int twips) { Move(left_, twips, width_, height_); }
    void SetWidth(int twips) { Move(left_, top_, twips, height_); }
    void SetHeight(int twips) { Move(left_, top_, width_, twips); }
    virtual void Move(int left, int top, int width, int height);

    // The control's own flags, as the designer set them; a control inside a
    // hidden frame keeps Visible true.
    virtual bool Visible() const;
    virtual void SetVisible(bool visible);
    virtual bool Enabled() const;
    virtual void SetEnabled(bool enabled);
    // True when a user could reach the control: it and all its containers are
    // shown and enabled.
    virtual bool Reachable() const;

    virtual QString Caption() const { return QString(); }
    virtual void SetCaption(const QString&) {}

    QString Tag;

    // -1 while the control keeps the platform's colour.
    int BackColor() const { return backColor_; }
    virtual void SetBackColor(int number);

    QString ToolTip() const;
    void SetToolTip(const QString& text);

    // Font by family and pixel size, for the few controls the design names a font for.
    void SetFont(const QString& family, int pixelSize, bool bold = false);

protected:
    int left_ = 0, top_ = 0, width_ = 0, height_ = 0;
    int backColor_ = -1;

private:
    ControlKind kind_;
};

// Loads a picture file for a control. A picture that cannot be read is a
// fault of the installation and raises RunTimeFault naming the file.
QImage LoadPicture(const QString& path);

// Mouse events of the clickable controls, in twips relative to the control.
// A single click gives MouseDown, Click; a double click MouseDown, Click,
// MouseDown, DblClick, and its second release no Click.
struct MouseHandlers {
    std::function<void()> Click;
    std::function<void()> DblClick;
    std::function<void(int button, int x, int y)> MouseDown;
};

// Turns the Qt mouse events of one widget into its MouseHandlers. Qt hands a
// widget the second press of a double click as a double-click event (and no
// press event), followed by a release: the double-click event is that press's
// MouseDown and then DblClick, and the release after it is no Click.
class MouseEventRelay {
public:
    void Press(const MouseHandlers& mouse, QMouseEvent* event);
    void Release(QWidget* widget, const MouseHandlers& mouse, QMouseEvent* event);
    void DoubleClick(const MouseHandlers& mouse, QMouseEvent* event);

private:
    // Between the double-click event and the release of that press.
    bool secondPressDown_ = false;
};

// A person's mouse input on a control, as Qt hands it to the widget: Press
// is a button going down; Click a press and its release; DoubleClick a press,
// its release, the double-click event of the second press and its release.
enum class MouseGesture { Press, Click, DoubleClick };

// Delivers a gesture at x, y (twips, relative to the control) through the
// widget's own mouse event handlers, one posted event per step and ahead of
// the work already waiting. A handler that pumps events, as the wait for a
// second click does after a Click, receives the next step while it waits, as
// it would a person's. A step finds the control hidden or disabled: that step
// and those after it are dropped. button is 1 (left), 2 (right) or 4 (middle).
void PostMouseGesture(Control* control, MouseGesture gesture, int button, int x, int y);

class FrameControl : public QGroupBox, public Control {
public:
    FrameControl(QWidget* parent, const QString& name, const QString& caption);
    QObject* Object() override { return this; }
    QString Caption() const override { return title(); }
    void SetCaption(const QString& text) override { setTitle(text); }
    void SetBackColor(int number) override;
};

// A plain container with a picture surface.
class PanelControl : public QFrame, public Control {
public:
    PanelControl(QWidget* parent, const QString& name);
    QObject* Object() override { return this; }
    QString Picture() const { return picturePath_; }
    void SetPicture(const QString& path);
    void SetBackColor(int number) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString picturePath_;
    QImage picture_;
};

class ButtonControl : public QPushButton, public Control {
public:
    ButtonControl(QWidget* parent, const QString& name, const QString& caption);
    QObject* Object() override { return this; }
    QString Caption() const override { return text(); }
    void SetCaption(const QString& caption) override { setText(caption); }
    std::function<void()> Click;
};

class CheckBoxControl : public QCheckBox, public Control {
public:
    CheckBoxControl(QWidget* parent, const QString& name, const QString& caption);
    QObject* Object() override { return this; }
    QString Caption() const override { return text(); }
    void SetCaption(const QString& caption) override { setText(caption); }
    void SetBackColor(int number) override;
    // 0 unticked, 1 ticked; setting it does not run Click.
    int Value() const { return isChecked() ? 1 : 0; }
    void SetValue(int value);
    std::function<void()> Click;

private:
    bool settingValue_ = false;
};

class ComboBoxControl : public QComboBox, public Control {
public:
    ComboBoxControl(QWidget* parent, const QString& name);
    QObject* Object() override { return this; }
    QString Caption() const override { return currentText(); }
    void SetBackColor(int number) override;
    int ListIndex() const { return currentIndex(); }
    void SetListIndex(int index) { setCurrentIndex(index); }
    QStringList Items() const;
    // Runs when the user picks an entry.
    std::function<void()> Click;
};

class TextBoxControl : public QLineEdit, public Control {
public:
    TextBoxControl(QWidget* parent, const QString& name, const QString& text);
    QObject* Object() override { return this; }
    QString Caption() const override { return text(); }
    void SetCaption(const QString& value) override { setText(value); }
    void SetBackColor(int number) override;

    // KeyPress gets the character code (8 backspace, 9 tab, 13 enter, 27 escape,
    // 32 to 255 the single-byte characters) and may change it; 0 swallows the key.
    std::function<void(int& keyAscii)> KeyPress;
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;

    // Delivers one key as the keyboard would, through KeyPress.
    void DeliverKey(int keyAscii);

    // Moves the focus to another control; LostFocus runs.
    void MoveFocusTo(QWidget* target);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void FocusChanged(QWidget* now);
    void LoseControlFocus();
    // True between GotFocus and LostFocus.
    bool hasControlFocus_ = false;
};

class LabelControl : public QLabel, public Control {
public:
    LabelControl(QWidget* parent, const QString& name, const QString& caption);
    QObject* Object() override { return this; }
    QString Caption() const override { return text(); }
    void SetCaption(const QString& caption) override { setText(caption); }
    void SetBackColor(int number) override;
    MouseHandlers Mouse;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    MouseEventRelay mouseRelay_;
};

// A one-line label whose text runs, such as the message board: each new
// caption is mostly the last one turned by one character. In a fixed-pitch
// font the whole text is drawn once into a strip, and each turn only moves
// the window on that strip; laying out and drawing the text 25 times a
// second would cost more than the rest of an idle program together.
class TickerLabel : public LabelControl {
public:
    TickerLabel(QWidget* parent, const QString& name);
    QString Caption() const override { return caption_; }
    void SetCaption(const QString& caption) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect TextArea() const;
    void DrawStrip(const QRect& area);

    QString caption_;
    // The caption the strip was drawn from, and how far it has turned since.
    QString stripText_;
    int turned_ = 0;
    QPixmap strip_;
};

// A picture that takes clicks. Without Stretch the control takes the size of
// its picture, with Stretch the picture fills the control.
class ImageControl : public QWidget, public Control {
public:
    ImageControl(QWidget* parent, const QString& name, bool stretch = false);
    QObject* Object() override { return this; }
    QString Picture() const { return picturePath_; }
    void SetPicture(const QString& path);
    void ClearPicture();
    bool Stretch() const { return stretch_; }
    MouseHandlers Mouse;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    MouseEventRelay mouseRelay_;
    bool stretch_;
    QString picturePath_;
    QImage picture_;
};

// A coloured border; clicks fall through to what lies below.
class ShapeControl : public QWidget, public Control {
public:
    ShapeControl(QWidget* parent, const QString& name, int borderColor, int borderWidth = 2);
    QObject* Object() override { return this; }
    int BorderColor() const { return borderColor_; }
    void SetBorderColor(int number);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int borderColor_;
    int borderWidth_;
};

// A timer of the window. Its Interval is the design's milliseconds; the
// running interval is scaled by the test time scale.
class TimerControl : public QTimer, public Control {
public:
    TimerControl(QObject* parent, const QString& name, int intervalMs);
    QObject* Object() override { return this; }
    void Move(int, int, int, int) override {}
    bool Visible() const override { return false; }
    void SetVisible(bool) override {}
    bool Enabled() const override { return isActive(); }
    void SetEnabled(bool enabled) override;
    bool Reachable() const override { return false; }
    int Interval() const { return intervalMs_; }
    void SetInterval(int ms);
    std::function<void()> Timer;

private:
    int intervalMs_;
};

// Runs an event handler of the game; a run-time fault inside it ends the
// program through the fault report instead of unwinding through Qt.
void Guarded(const std::function<void()>& handler);

} // namespace vk
