#include "ui/Controls.h"

#include <QApplication>
#include <algorithm>
#include <QFontInfo>
#include <QFontMetrics>

#include "shell/FaultReport.h"
#include "shell/RunTimeFault.h"
#include "shell/Clock.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>

#include <cmath>
#include <exception>

namespace vk {

const char* KindName(ControlKind kind)
{
    switch (kind) {
    case ControlKind::Form: return "form";
    case ControlKind::Frame: return "frame";
    case ControlKind::Panel: return "panel";
    case ControlKind::Button: return "button";
    case ControlKind::CheckBox: return "checkbox";
    case ControlKind::ComboBox: return "combobox";
    case ControlKind::TextBox: return "textbox";
    case ControlKind::Label: return "label";
    case ControlKind::Image: return "image";
    case ControlKind::Shape: return "shape";
    case ControlKind::Timer: return "timer";
    }
    return "form";
}

QColor ColorFromNumber(int number)
{
    return QColor(number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF);
}

void Guarded(const std::function<void()>& handler)
{
    if (!handler)
        return;
    try {
        handler();
    } catch (const RunTimeFault& fault) {
        ReportFaultAndExit(QString::fromStdString(fault.what()));
    } catch (const std::exception& error) {
        ReportFaultAndExit(QString::fromStdString(error.what()));
    }
}

// ---- Control ----------------------------------------------------------------

void Control::Move(int left, int top, int width, int height)
{
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    if (QWidget* w = Widget())
        w->setGeometry(TwipsToPixels(left), TwipsToPixels(top), TwipsToPixels(width), TwipsToPixels(height));
}

bool Control::Visible() const
{
    const QWidget* w = Widget();
    return w && !w->isHidden();
}

void Control::SetVisible(bool visible)
{
    if (QWidget* w = Widget())
        w->setVisible(visible);
}

bool Control::Enabled() const
{
    const QWidget* w = Widget();
    return w && !w->testAttribute(Qt::WA_ForceDisabled);
}

void Control::SetEnabled(bool enabled)
{
    if (QWidget* w = Widget())
        w->setEnabled(enabled);
}

bool Control::Reachable() const
{
    const QWidget* w = Widget();
    return w && w->isVisible() && w->isEnabled();
}

void Control::SetBackColor(int number)
{
    backColor_ = number;
    if (QWidget* w = Widget()) {
        QPalette palette = w->palette();
        palette.setColor(QPalette::Window, ColorFromNumber(number));
        palette.setColor(QPalette::Base, ColorFromNumber(number));
        palette.setColor(QPalette::Button, ColorFromNumber(number));
        w->setPalette(palette);
        w->setAutoFillBackground(true);
    }
}

QString Control::ToolTip() const
{
    const QWidget* w = Widget();
    return w ? w->toolTip() : QString();
}

void Control::SetToolTip(const QString& text)
{
    if (QWidget* w = Widget())
        w->setToolTip(text);
}

void Control::SetFont(const QString& family, int pixelSize, bool bold)
{
    if (QWidget* w = Widget()) {
        QFont font(family);
        font.setPixelSize(pixelSize);
        font.setBold(bold);
        font.setStyleHint(family.contains(QLatin1String("Mono")) ? QFont::TypeWriter : QFont::SansSerif);
        w->setFont(font);
    }
}

QImage LoadPicture(const QString& path)
{
    QImageReader reader(path);
    QImage image = reader.read();
    if (image.isNull())
        throw RunTimeFault("file not found: " + path.toStdString());
    return image;
}

namespace {

int ButtonNumber(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton: return 1;
    case Qt::RightButton: return 2;
    case Qt::MiddleButton: return 4;
    default: return 0;
    }
}

Qt::MouseButton QtButton(int number)
{
    switch (number) {
    case 2: return Qt::RightButton;
    case 4: return Qt::MiddleButton;
    default: return Qt::LeftButton;
    }
}

void RunMouseDown(const MouseHandlers& mouse, QMouseEvent* event)
{
    if (mouse.MouseDown) {
        // From the exact position, so that a posted event at a point between
        // two pixels gives its own twips back.
        const QPointF p = event->position();
        const int x = static_cast<int>(std::lround(p.x() * TwipsPerPixel));
        const int y = static_cast<int>(std::lround(p.y() * TwipsPerPixel));
        Guarded([&] { mouse.MouseDown(ButtonNumber(event->button()), x, y); });
    }
}

void RunClick(QWidget* w, const MouseHandlers& mouse, QMouseEvent* event)
{
    const QPointF p = event->position();
    const QPoint pixel(static_cast<int>(std::floor(p.x())), static_cast<int>(std::floor(p.y())));
    if (event->button() == Qt::LeftButton && w->rect().contains(pixel) && mouse.Click)
        Guarded(mouse.Click);
}

// One step of a posted gesture: the kind of mouse event and its buttons.
struct GestureStep {
    QEvent::Type type;
    Qt::MouseButtons buttonsAfter;
};

// Hands the steps of one gesture to its widget, one posted event each. It is
// a child of the widget, so that the widget's end takes it and its waiting
// events along.
class GestureRelay : public QObject {
public:
    GestureRelay(QWidget* widget, Qt::MouseButton button, QPointF position, QList<GestureStep> steps)
        : QObject(widget), widget_(widget), button_(button), position_(position), steps_(std::move(steps))
    {
    }

    void PostAll()
    {
        for (qsizetype i = 0; i < steps_.size(); ++i)
            QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
    }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        const qsizetype step = next_++;
        if (next_ == steps_.size())
            deleteLater();
        if (dropped_ || step >= steps_.size())
            return true;
        const auto* control = dynamic_cast<const Control*>(widget_);
        if (!control || !control->Reachable()) {
            dropped_ = true;
            return true;
        }
        // A handler of this step may pump events, as a Click does while it
        // waits for a second click. An event loop started while posted events
        // are being delivered takes up the ones queued before only once the
        // dispatcher is woken, and the next step of the gesture is one of them.
        if (next_ < steps_.size()) {
            if (QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance())
                dispatcher->wakeUp();
        }
        const GestureStep& s = steps_[step];
        QMouseEvent mouse(s.type, position_, widget_->mapToGlobal(position_), button_, s.buttonsAfter, Qt::NoModifier);
        QCoreApplication::sendEvent(widget_, &mouse);
        return true;
    }

private:
    QWidget* widget_;
    Qt::MouseButton button_;
    QPointF position_;
    QList<GestureStep> steps_;
    qsizetype next_ = 0;
    bool dropped_ = false;
};

} // namespace

// ---- Mouse events -----------------------------------------------------------

void MouseEventRelay::Press(const MouseHandlers& mouse, QMouseEvent* event)
{
    secondPressDown_ = false;
    RunMouseDown(mouse, event);
}

void MouseEventRelay::Release(QWidget* widget, const MouseHandlers& mouse, QMouseEvent* event)
{
    if (secondPressDown_ && event->button() == Qt::LeftButton) {
        secondPressDown_ = false;
        return;
    }
    RunClick(widget, mouse, event);
}

void MouseEventRelay::DoubleClick(const MouseHandlers& mouse, QMouseEvent* event)
{
    // Marked before the handlers run: one of them may pump events, and the
    // release of this press may arrive inside it.
    const bool left = event->button() == Qt::LeftButton;
    secondPressDown_ = left;
    RunMouseDown(mouse, event);
    if (left && mouse.DblClick)
        Guarded(mouse.DblClick);
}

void PostMouseGesture(Control* control, MouseGesture gesture, int button, int x, int y)
{
    QWidget* widget = control->Widget();
    if (!widget)
        return;
    const Qt::MouseButton pressed = QtButton(button);
    QList<GestureStep> steps{{QEvent::MouseButtonPress, pressed}};
    if (gesture != MouseGesture::Press)
        steps.append({QEvent::MouseButtonRelease, Qt::NoButton});
    if (gesture == MouseGesture::DoubleClick) {
        steps.append({QEvent::MouseButtonDblClick, pressed});
        steps.append({QEvent::MouseButtonRelease, Qt::NoButton});
    }
    const QPointF position(static_cast<double>(x) / TwipsPerPixel, static_cast<double>(y) / TwipsPerPixel);
    (new GestureRelay(widget, pressed, position, std::move(steps)))->PostAll();
}

// ---- Frame ------------------------------------------------------------------

FrameControl::FrameControl(QWidget* parent, const QString& name, const QString& caption)
    : QGroupBox(caption, parent), Control(ControlKind::Frame)
{
    setObjectName(name);
    setFlat(false);
}

void FrameControl::SetBackColor(int number)
{
    Control::SetBackColor(number);
    setStyleSheet(QStringLiteral("QGroupBox#%1 { background-color: %2; border: 1px solid #808080; margin-top: 6px; }"
                                 "QGroupBox#%1::title { subcontrol-origin: margin; left: 6px; padding: 0 2px; }")
                      .arg(objectName(), ColorFromNumber(number).name()));
}

// ---- Panel ------------------------------------------------------------------

PanelControl::PanelControl(QWidget* parent, const QString& name) : QFrame(parent), Control(ControlKind::Panel)
{
    setObjectName(name);
    setFrameShape(QFrame::Panel);
    setFrameShadow(QFrame::Sunken);
}

void PanelControl::SetPicture(const QString& path)
{
    if (path.isEmpty()) {
        picture_ = QImage();
        picturePath_.clear();
    } else {
        picture_ = LoadPicture(path);
        picturePath_ = path;
    }
    update();
}

void PanelControl::SetBackColor(int number)
{
    Control::SetBackColor(number);
}

void PanelControl::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    if (!picture_.isNull()) {
        QPainter painter(this);
        painter.drawImage(0, 0, picture_);
    }
}

// ---- Button -----------------------------------------------------------------

ButtonControl::ButtonControl(QWidget* parent, const QString& name, const QString& caption)
    : QPushButton(caption, parent), Control(ControlKind::Button)
{
    setObjectName(name);
    setAutoDefault(false);
    QObject::connect(this, &QPushButton::clicked, this, [this] { Guarded(Click); });
}

// ---- Check box --------------------------------------------------------------

CheckBoxControl::CheckBoxControl(QWidget* parent, const QString& name, const QString& caption)
    : QCheckBox(caption, parent), Control(ControlKind::CheckBox)
{
    setObjectName(name);
    QObject::connect(this, &QCheckBox::clicked, this, [this] {
        if (!settingValue_)
            Guarded(Click);
    });
}

void CheckBoxControl::SetValue(int value)
{
    settingValue_ = true;
    setChecked(value != 0);
    settingValue_ = false;
}

void CheckBoxControl::SetBackColor(int number)
{
    Control::SetBackColor(number);
}

// ---- Combo box --------------------------------------------------------------

ComboBoxControl::ComboBoxControl(QWidget* parent, const QString& name) : QComboBox(parent), Control(ControlKind::ComboBox)
{
    setObjectName(name);
    setEditable(false);
    QObject::connect(this, &QComboBox::activated, this, [this](int) { Guarded(Click); });
}

void ComboBoxControl::SetBackColor(int number)
{
    Control::SetBackColor(number);
    setStyleSheet(QStringLiteral("QComboBox#%1 { background-color: %2; }").arg(objectName(), ColorFromNumber(number).name()));
}

QStringList ComboBoxControl::Items() const
{
    QStringList items;
    for (int i = 0; i < count(); ++i)
        items << itemText(i);
    return items;
}

// ---- Text box ---------------------------------------------------------------

TextBoxControl::TextBoxControl(QWidget* parent, const QString& name, const QString& text)
    : QLineEdit(text, parent), Control(ControlKind::TextBox)
{
    setObjectName(name);
    QObject::connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { FocusChanged(now); });
}

void TextBoxControl::SetBackColor(int number)
{
    Control::SetBackColor(number);
}

void TextBoxControl::DeliverKey(int keyAscii)
{
    Qt::Key key;
    QString text;
    switch (keyAscii) {
    case 8: key = Qt::Key_Backspace; text = QString(QChar(8)); break;
    case 9: key = Qt::Key_Tab; text = QString(QChar(9)); break;
    case 13: key = Qt::Key_Return; text = QString(QChar(13)); break;
    case 27: key = Qt::Key_Escape; text = QString(QChar(27)); break;
    default:
        text = QString(QChar::fromLatin1(static_cast<char>(keyAscii & 0xFF)));
        key = static_cast<Qt::Key>(text.at(0).toUpper().unicode());
        break;
    }
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    keyPressEvent(&press);
}

void TextBoxControl::keyPressEvent(QKeyEvent* event)
{
    int code = 0;
    switch (event->key()) {
    case Qt::Key_Backspace: code = 8; break;
    case Qt::Key_Tab: code = 9; break;
    case Qt::Key_Return:
    case Qt::Key_Enter: code = 13; break;
    case Qt::Key_Escape: code = 27; break;
    default: {
        const QString text = event->text();
        if (text.size() == 1 && text.at(0).unicode() >= 32 && text.at(0).unicode() <= 255)
            code = text.at(0).unicode();
        break;
    }
    }
    if (code == 0) {
        // Keys without a character (arrows, Home, Delete) keep their usual editing.
        QLineEdit::keyPressEvent(event);
        return;
    }
    const int original = code;
    if (KeyPress)
        Guarded([&] { KeyPress(code); });
    if (code == 0)
        return;
    if (code == original) {
        if (code == 9 || code == 13 || code == 27)
            return; // a single-line box takes no tab, enter or escape characters
        QLineEdit::keyPressEvent(event);
        return;
    }
    // The handler replaced the character.
    if (code == 8) {
        backspace();
    } else if (code >= 32 && code <= 255) {
        insert(QString(QChar::fromLatin1(static_cast<char>(code))));
    }
}

void TextBoxControl::FocusChanged(QWidget* now)
{
    // The focus moves between controls, not between windows: when the window
    // loses its activation (now is null) the box keeps its focus, and getting
    // the activation back is no new got focus.
    if (now == this && !hasControlFocus_) {
        hasControlFocus_ = true;
        Guarded(GotFocus);
    } else if (now && now != this) {
        LoseControlFocus();
    }
}

void TextBoxControl::LoseControlFocus()
{
    if (!hasControlFocus_)
        return;
    hasControlFocus_ = false;
    Guarded(LostFocus);
}

void TextBoxControl::MoveFocusTo(QWidget* target)
{
    target->setFocus(Qt::TabFocusReason);
    // A window that isn't active records the new focus without telling the
    // box; the box loses its focus all the same.
    if (!hasFocus())
        LoseControlFocus();
}

// ---- Label ------------------------------------------------------------------

LabelControl::LabelControl(QWidget* parent, const QString& name, const QString& caption)
    : QLabel(caption, parent), Control(ControlKind::Label)
{
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setWordWrap(false);
}

void LabelControl::SetBackColor(int number)
{
    Control::SetBackColor(number);
}

void LabelControl::mousePressEvent(QMouseEvent* event)
{
    mouseRelay_.Press(Mouse, event);
}

void LabelControl::mouseReleaseEvent(QMouseEvent* event)
{
    mouseRelay_.Release(this, Mouse, event);
}

void LabelControl::mouseDoubleClickEvent(QMouseEvent* event)
{
    mouseRelay_.DoubleClick(Mouse, event);
}

// ---- Ticker label -----------------------------------------------------------

TickerLabel::TickerLabel(QWidget* parent, const QString& name) : LabelControl(parent, name, QString()) {}

void TickerLabel::SetCaption(const QString& caption)
{
    if (caption == caption_)
        return;
    const bool turnedByOne = !caption_.isEmpty() && caption.size() == caption_.size() &&
                             caption == caption_.mid(1) + caption_.left(1) && !stripText_.isEmpty();
    if (turnedByOne) {
        turned_ = (turned_ + 1) % static_cast<int>(stripText_.size());
    } else {
        stripText_ = caption;
        turned_ = 0;
        strip_ = QPixmap();
    }
    caption_ = caption;
    update(contentsRect());
}

QRect TickerLabel::TextArea() const
{
    return contentsRect().adjusted(margin(), margin(), -margin(), -margin());
}

void TickerLabel::DrawStrip(const QRect& area)
{
    // The text twice over, so that any turn finds the window's width on it.
    const QFontMetrics metrics = fontMetrics();
    const int advance = metrics.horizontalAdvance(QLatin1Char('M'));
    const int visible = area.width() / std::max(1, advance) + 2;
    QString text = stripText_;
    while (text.size() < stripText_.size() + visible)
        text += stripText_;
    const qreal ratio = devicePixelRatioF();
    QPixmap strip(QSize(advance * static_cast<int>(text.size()), area.height()) * ratio);
    strip.setDevicePixelRatio(ratio);
    strip.fill(Qt::transparent);
    QPainter painter(&strip);
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::WindowText));
    for (int i = 0; i < text.size(); ++i)
        painter.drawText(QRect(i * advance, 0, advance, area.height()), Qt::AlignLeft | Qt::AlignVCenter, text.mid(i, 1));
    strip_ = strip;
}

void TickerLabel::paintEvent(QPaintEvent* event)
{
    // Frame and background as a label draws them, then the left part of the
    // caption that fits, centred in height.
    QFrame::paintEvent(event);
    if (caption_.isEmpty())
        return;
    const QRect area = TextArea();
    QPainter painter(this);
    painter.setClipRect(area);
    if (!QFontInfo(font()).fixedPitch()) {
        const int smallest = std::max(1, fontMetrics().horizontalAdvance(QLatin1Char('i')));
        painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         caption_.left(area.width() / smallest + 2));
        return;
    }
    if (strip_.isNull() || qRound(strip_.height() / strip_.devicePixelRatio()) != area.height())
        DrawStrip(area);
    const int advance = fontMetrics().horizontalAdvance(QLatin1Char('M'));
    painter.drawPixmap(area.topLeft(), strip_,
                       QRectF(turned_ * advance * strip_.devicePixelRatio(), 0,
                              area.width() * strip_.devicePixelRatio(), area.height() * strip_.devicePixelRatio()));
}

// ---- Image ------------------------------------------------------------------

ImageControl::ImageControl(QWidget* parent, const QString& name, bool stretch)
    : QWidget(parent), Control(ControlKind::Image), stretch_(stretch)
{
    setObjectName(name);
}

void ImageControl::SetPicture(const QString& path)
{
    if (path.isEmpty()) {
        ClearPicture();
        return;
    }
    picture_ = LoadPicture(path);
    picturePath_ = path;
    if (!stretch_)
        Move(left_, top_, PixelsToTwips(picture_.width()), PixelsToTwips(picture_.height()));
    update();
}

void ImageControl::ClearPicture()
{
    picture_ = QImage();
    picturePath_.clear();
    update();
}

void ImageControl::paintEvent(QPaintEvent*)
{
    if (picture_.isNull())
        return;
    QPainter painter(this);
    if (stretch_)
        painter.drawImage(rect(), picture_);
    else
        painter.drawImage(0, 0, picture_);
}

void ImageControl::mousePressEvent(QMouseEvent* event)
{
    mouseRelay_.Press(Mouse, event);
}

void ImageControl::mouseReleaseEvent(QMouseEvent* event)
{
    mouseRelay_.Release(this, Mouse, event);
}

void ImageControl::mouseDoubleClickEvent(QMouseEvent* event)
{
    mouseRelay_.DoubleClick(Mouse, event);
}

// ---- Shape ------------------------------------------------------------------

ShapeControl::ShapeControl(QWidget* parent, const QString& name, int borderColor, int borderWidth)
    : QWidget(parent), Control(ControlKind::Shape), borderColor_(borderColor), borderWidth_(borderWidth)
{
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ShapeControl::SetBorderColor(int number)
{
    borderColor_ = number;
    update();
}

void ShapeControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QPen pen(ColorFromNumber(borderColor_));
    pen.setWidth(borderWidth_);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    const int inset = borderWidth_ / 2;
    painter.drawRect(rect().adjusted(inset, inset, -inset - (borderWidth_ % 2 ? 1 : 0), -inset - (borderWidth_ % 2 ? 1 : 0)));
}

// ---- Timer ------------------------------------------------------------------

TimerControl::TimerControl(QObject* parent, const QString& name, int intervalMs)
    : QTimer(parent), Control(ControlKind::Timer), intervalMs_(intervalMs)
{
    setObjectName(name);
    setTimerType(Qt::PreciseTimer);
    QTimer::setInterval(ScaledMs(intervalMs));
    QObject::connect(this, &QTimer::timeout, this, [this] { Guarded(Timer); });
}

void TimerControl::SetEnabled(bool enabled)
{
    if (enabled && !isActive())
        start();
    else if (!enabled)
        stop();
}

void TimerControl::SetInterval(int ms)
{
    intervalMs_ = ms;
    QTimer::setInterval(ScaledMs(ms));
}

} // namespace vk
