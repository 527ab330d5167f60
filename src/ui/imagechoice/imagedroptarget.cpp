// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "imagedroptarget.h"

#include "privateview.h"

#include <QApplication>
#include <QChildEvent>
#include <QClipboard>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QShortcut>
#include <QToolTip>
#include <QWidget>

ImageDropTarget::ImageDropTarget(QWidget *window, PrivateView *choice)
    : QObject(window)
    , m_window(window)
    , m_choice(choice)
{
    if (!window)
        return;
    window->setAcceptDrops(true);
    watch(window);
    const QList<QWidget *> inside = window->findChildren<QWidget *>();
    for (QWidget *widget : inside) {
        if (widget->acceptDrops())
            watch(widget);
    }
    // A text field pastes into itself: the shortcut reaches the window only from elsewhere.
    auto *shortcut = new QShortcut(QKeySequence::Paste, window);
    connect(shortcut, &QShortcut::activated, this, &ImageDropTarget::paste);
}

void ImageDropTarget::watch(QWidget *widget)
{
    widget->installEventFilter(this);
}

bool ImageDropTarget::isOwnDrag(const QDropEvent *event) const
{
    const auto *source = qobject_cast<const QWidget *>(event->source());
    return source && m_window && (source == m_window || m_window->isAncestorOf(source));
}

bool ImageDropTarget::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    // The preview makes the widget that shows the page only once it loads; it takes drops too.
    if (type == QEvent::ChildAdded) {
        if (auto *child = qobject_cast<QWidget *>(static_cast<QChildEvent *>(event)->child()))
            watch(child);
        return false;
    }
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop &&
        type != QEvent::DragLeave)
        return QObject::eventFilter(watched, event);
    if (type == QEvent::DragLeave) {
        QToolTip::hideText();
        return false;
    }
    auto *drop = static_cast<QDropEvent *>(event);
    if (isOwnDrag(drop))
        return false;
    auto *widget = qobject_cast<QWidget *>(watched);
    const ImageDrop::Verdict verdict = ImageDrop::classify(drop->mimeData());
    if (verdict.kind == ImageDrop::Kind::Refused) {
        // Ignored, the drag shows the pointer that says "not here".
        drop->setDropAction(Qt::IgnoreAction);
        drop->ignore();
        refuse(verdict, widget, drop->position().toPoint());
        return true;
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop) {
        QToolTip::hideText();
        take(verdict);
    }
    return true;
}

void ImageDropTarget::paste()
{
    const ImageDrop::Verdict verdict = ImageDrop::classify(QApplication::clipboard()->mimeData());
    if (verdict.kind == ImageDrop::Kind::Refused) {
        QWidget *where = m_choice ? m_choice.data() : m_window.data();
        refuse(verdict, where, where ? where->rect().center() : QPoint());
        return;
    }
    take(verdict);
}

bool ImageDropTarget::take(const ImageDrop::Verdict &verdict)
{
    if (!m_choice)
        return false;
    m_lastRefusal.clear();
    if (verdict.kind == ImageDrop::Kind::ImageFile)
        m_choice->takeImageFile(verdict.path);
    else if (verdict.kind == ImageDrop::Kind::Link)
        m_choice->takeLink(verdict.link);
    return verdict.kind != ImageDrop::Kind::Refused;
}

void ImageDropTarget::refuse(const ImageDrop::Verdict &verdict, QWidget *where, const QPoint &at)
{
    m_lastRefusal = ImageDrop::reasonText(verdict.reason);
    if (where)
        QToolTip::showText(where->mapToGlobal(at), m_lastRefusal, where);
}
