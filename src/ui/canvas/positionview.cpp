// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "positionview.h"

#include "canvasaccessible.h"
#include "editgeometry.h"
#include "localisation.h"
#include "postionviewdelete.h"
#include "proportions.h"
#include "veleditview.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
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

// The box holds a reduced copy of a large image: painting it costs the same at any image size.
constexpr int pictureSide = 1024;

// What the snapping guides are drawn in: a colour no page or box uses.
QColor guideColor()
{
    return QColor(230, 0, 140);
}

// The record's transparency as the book uses it: 100 % and more is invisible.
qreal opacityFor(float transparency)
{
    return qBound(0.0, 1.0 - double(transparency) / 100.0, 1.0);
}

// A one-point line across the page on the pixel at position, kept on the page at its far edge.
QRectF guideLine(const Snapping::Guide &guide, QSizeF page)
{
    const qreal length = guide.orientation == Qt::Vertical ? page.width() : page.height();
    const qreal at = qBound(0.0, std::floor(guide.position), length - 1);
    return guide.orientation == Qt::Vertical ? QRectF(at, 0, 1, page.height())
                                             : QRectF(0, at, page.width(), 1);
}

// The two equal margins of one axis, each a dashed bar from the page's edge to the box.
void paintEqualMargins(QPainter &p, const QRectF &box, QSizeF page, Qt::Orientation across)
{
    p.setPen(QPen(guideColor(), 1.0, Qt::DashLine, Qt::FlatCap));
    if (across == Qt::Horizontal) {
        const qreal y = std::floor(box.center().y()) + 0.5;
        p.drawLine(QPointF(0, y), QPointF(box.left(), y));
        p.drawLine(QPointF(box.right(), y), QPointF(page.width(), y));
    } else {
        const qreal x = std::floor(box.center().x()) + 0.5;
        p.drawLine(QPointF(x, 0), QPointF(x, box.top()));
        p.drawLine(QPointF(x, box.bottom()), QPointF(x, page.height()));
    }
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
    m_lastEdit = Edit::Gesture;
    const QSizeF bounds(size());
    const PositionRect margins = Snapping::exactMargins(
        PositionRect::convertObjectFrame(clampFrameForMargins(box->frame(), bounds), bounds),
        box->snapResult());
    // Guides are drawn while there are any; a step that neither had nor has any paints nothing.
    const bool guidesShown = !m_snap.guides.isEmpty() || !box->snapResult().guides.isEmpty();
    m_snap = box->snapResult();
    if (guidesShown)
        update();
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
    if (box != m_objectView)
        return;
    m_lastEdit = Edit::Gesture;
    if (!m_snap.guides.isEmpty()) {
        m_snap = {};
        update();
    }
    if (m_ower)
        m_ower->didChangedPositionView();
}

void PositionView::setPageProportions(QSizeF proportions)
{
    m_pageProportions = proportions;
    updateKeptAspect();
}

void PositionView::setImage(const QImage &image, QSize naturalSize)
{
    m_imageSize = image.isNull() ? QSize() : naturalSize.isValid() ? naturalSize : image.size();
    const bool large = image.width() > pictureSide || image.height() > pictureSide;
    m_objectView->setPicture(large ? image.scaled(pictureSide, pictureSide, Qt::KeepAspectRatio,
                                                  Qt::SmoothTransformation)
                                   : image);
    updateKeptAspect();
}

void PositionView::setLinkHost(const QString &host)
{
    m_linkHost = host;
    m_objectView->setLinkHost(host);
}

// The box keeps the image's shape on the page, which on the canvas depends on the canvas's size.
void PositionView::updateKeptAspect()
{
    m_objectView->setKeptAspect(Proportions::boxAspect(m_imageSize, size(), m_pageProportions));
}

void PositionView::fitToImage()
{
    if (m_imageSize.isEmpty())
        return;
    m_lastEdit = Edit::Gesture;
    applyEdit(Proportions::fittedToImage(m_positionRect, m_imageSize, size(), m_pageProportions));
}

QMenu *PositionView::createContextMenu(QWidget *parent)
{
    auto *menu = new QMenu(parent);
    const QString fit = QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Fit to image"));
    QAction *action = menu->addAction(loadAppString(fit, fit), this, &PositionView::fitToImage);
    action->setObjectName(QStringLiteral("actionFitToImage"));
    action->setEnabled(!m_imageSize.isEmpty());
    if (m_undoAction && m_redoAction) {
        menu->addSeparator();
        menu->addAction(m_undoAction);
        menu->addAction(m_redoAction);
    }
    return menu;
}

void PositionView::setHistoryActions(QAction *undo, QAction *redo)
{
    m_undoAction = undo;
    m_redoAction = redo;
}

void PositionView::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createContextMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
    event->accept();
}

QString PositionView::marginsText() const
{
    const QString format = QStringLiteral(
        QT_TRANSLATE_NOOP("PluginLocale", "Left %1 %, top %2 %, right %3 %, bottom %4 %"));
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

// A key press is a short drag.
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
    m_lastEdit = Edit::Keys;
    applyEdit(steppedMargins(m_positionRect, *step, size()));
}

// The owner hears of the step if the margins moved, and of its end in any case, which is when it
// saves.
void PositionView::applyEdit(const PositionRect &next)
{
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
    paintGuides(p);

    // Values beyond the page show as far as they can: never the box of an earlier value.
    const std::optional<QRectF> shown = EditGeometry::shownFrame(m_positionRect, bounds.size());
    if (!shown)
        return; // a pair on the page that leaves no room: the box keeps whatever frame it had
    const QRectF frame = *shown;
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

void PositionView::paintGuides(QPainter &p) const
{
    if (m_snap.guides.isEmpty())
        return;
    const QSizeF page(size());
    for (const Snapping::Guide &guide : m_snap.guides)
        p.fillRect(guideLine(guide, page), guideColor());
    const QRectF box = m_objectView->frame();
    if (m_snap.equalHorizontal())
        paintEqualMargins(p, box, page, Qt::Horizontal);
    if (m_snap.equalVertical())
        paintEqualMargins(p, box, page, Qt::Vertical);
}

// The record is the master: the box follows it on every redraw.
void PositionView::placeEditView(const QRectF &frame)
{
    m_objectView->setPictureOpacity(opacityFor(m_positionRect.transparency()));
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
    updateKeptAspect();
    QWidget::resizeEvent(event);
}
