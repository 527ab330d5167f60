#include "positionview.h"

#include "canvasaccessible.h"
#include "editgeometry.h"
#include "localisation.h"
#include "postionviewdelete.h"
#include "veleditview.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

using namespace EditGeometry;

namespace {

// A margin as the window's language writes a number: one decimal, none when it is whole.
QString marginNumber(const QLocale &locale, float value)
{
    const double rounded = std::round(double(value) * 10.0) / 10.0;
    return locale.toString(rounded, 'f', rounded == std::floor(rounded) ? 0 : 1);
}

} // namespace

PositionView::PositionView(QWidget *parent)
    : QWidget(parent)
    , m_objectView(new VelEditView())
{
    // A zero-sized rectangle in the page's centre: no box until real margins arrive.
    m_positionRect.setLeft(50);
    m_positionRect.setTop(50);
    m_positionRect.setRight(50);
    m_positionRect.setBottom(50);
    static const bool accessible = (QAccessible::installFactory(&CanvasAccessible::factory), true);
    Q_UNUSED(accessible);
    setFocusPolicy(Qt::StrongFocus);
    // Direct: the record must hold the new margins before the box's step returns.
    connect(m_objectView, &VelEditView::EditViewChangeNotification, this,
            &PositionView::onChangeEditView, Qt::DirectConnection);
    connect(m_objectView, &VelEditView::EditViewDidChangedNotification, this,
            &PositionView::onDidChangedEditView, Qt::DirectConnection);
}

PositionView::~PositionView()
{
    if (m_objectView->parentWidget() != this)
        delete m_objectView;
}

void PositionView::setPositionRect(const PositionRect &rect)
{
    m_positionRect = rect;
    update();
    announceMargins();
}

void PositionView::setPositionRectWithLeft(float left, float top, float right, float bottom,
                                           float transparency, int layer)
{
    m_positionRect.setLeft(left);
    m_positionRect.setTop(top);
    m_positionRect.setRight(right);
    m_positionRect.setBottom(bottom);
    m_positionRect.setTransparency(transparency);
    m_positionRect.setLayer(layer);
    update();
    announceMargins();
}

QColor PositionView::fillColor() const
{
    return m_fillColor.isValid() ? m_fillColor : palette().color(QPalette::Base);
}

void PositionView::setFillColor(const QColor &color)
{
    m_fillColor = color;
    update();
}

QColor PositionView::outlineColor() const
{
    return m_outlineColor.isValid() ? m_outlineColor : QColor(128, 128, 128);
}

void PositionView::setOutlineColor(const QColor &color)
{
    m_outlineColor = color;
    update();
}

void PositionView::onChangeEditView(VelEditView *box)
{
    if (box != m_objectView)
        return;
    const QSizeF bounds(size());
    const PositionRect margins =
        PositionRect::convertObjectFrame(clampFrameForMargins(box->frame(), bounds), bounds);
    m_positionRect.setLeft(margins.left());
    m_positionRect.setTop(margins.top());
    m_positionRect.setRight(margins.right());
    m_positionRect.setBottom(margins.bottom());
    announceMargins();
    // No redraw here: the owner decides what follows from the new margins.
    if (m_ower)
        m_ower->onChangePositionView();
}

void PositionView::onDidChangedEditView(VelEditView *box)
{
    if (box == m_objectView && m_ower)
        m_ower->didChangedPositionView();
}

QString PositionView::marginsText() const
{
    const QString format = QStringLiteral("Left %1 %, top %2 %, right %3 %, bottom %4 %");
    const QLocale locale(defaultLanguageCode().isEmpty() ? QStringLiteral("en")
                                                         : defaultLanguageCode());
    return loadAppString(format, format)
        .arg(marginNumber(locale, m_positionRect.left()),
             marginNumber(locale, m_positionRect.top()),
             marginNumber(locale, m_positionRect.right()),
             marginNumber(locale, m_positionRect.bottom()));
}

void PositionView::announceMargins()
{
    emit marginsChanged();
    // The text is built only for a listener: a drag announces on every step.
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(this, marginsText());
    QAccessible::updateAccessibility(&event);
}

// A key press is a short drag: the owner hears of the step if the margins moved, and of its end
// in any case, which is when it saves.
void PositionView::keyPressEvent(QKeyEvent *event)
{
    const auto step = keyStepFor(event->key(), event->modifiers());
    if (!step) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (!m_keyboardFocus) {
        m_keyboardFocus = true;
        update();
    }
    const PositionRect next = steppedMargins(m_positionRect, *step, size());
    if (next != m_positionRect) {
        m_positionRect = next;
        update();
        announceMargins();
        if (m_ower)
            m_ower->onChangePositionView();
    }
    if (m_ower)
        m_ower->didChangedPositionView();
}

void PositionView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setTransform(flipTransform(height()));

    const QRectF bounds(rect());
    p.fillRect(bounds, fillColor());
    // A one-point line just inside the bounds, filled as a ring so its corners are square and
    // its whole width is on the page.
    QPainterPath outline;
    outline.addRect(bounds);
    outline.addRect(bounds.adjusted(1, 1, -1, -1));
    p.fillPath(outline, outlineColor());
    if (showsFocus())
        paintFocusFrame(p);

    const QRectF frame = PositionRect::getObjectFrameWith(m_positionRect, bounds.size());
    if (!(frame.width() > 0 && frame.height() > 0))
        return; // the box keeps whatever frame it had
    const bool boxHidden =
        m_objectView->isHidden() && m_objectView->testAttribute(Qt::WA_WState_ExplicitShowHide);
    if (boxHidden) {
        p.setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        p.setBrush(Qt::red);
        p.drawRect(frame);
        return;
    }
    placeEditView(frame);
}

// The ring shows keyboard work, as Qt's styles do: focus that came by Tab or a mnemonic, or a
// key used on the canvas, not a mere click.
bool PositionView::showsFocus() const
{
    return hasFocus() && (m_keyboardFocus || window()->testAttribute(Qt::WA_KeyboardFocusChange));
}

void PositionView::focusInEvent(QFocusEvent *event)
{
    const Qt::FocusReason reason = event->reason();
    m_keyboardFocus = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                      reason == Qt::ShortcutFocusReason ||
                      (reason == Qt::ActiveWindowFocusReason && m_keyboardFocus);
    QWidget::focusInEvent(event);
}

// A two-point ring in the palette's highlight over the page's own outline, so that keyboard focus
// shows on light, dark and high-contrast palettes alike.
void PositionView::paintFocusFrame(QPainter &painter)
{
    const QRectF bounds(rect());
    QPainterPath ring;
    ring.addRect(bounds);
    ring.addRect(bounds.adjusted(2, 2, -2, -2));
    painter.fillPath(ring, palette().color(QPalette::Highlight));
}

// The record is the master: the box follows it on every redraw.
void PositionView::placeEditView(const QRectF &frame)
{
    m_objectView->setFrame(frame);
    m_objectView->forceRefreshLayout();
    if (m_objectView->parentWidget() != this) {
        m_objectView->setParent(this);
        m_objectView->show();
    }
}

void PositionView::resizeEvent(QResizeEvent *event)
{
    // The box's frame is y-up; a new height moves its widget even though the frame is the same.
    if (m_objectView->parentWidget() == this)
        m_objectView->setFrame(m_objectView->frame());
    QWidget::resizeEvent(event);
}
