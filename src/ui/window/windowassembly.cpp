// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "windowassembly.h"

#include "aspectbox.h"
#include "columnfit.h"
#include "fileops.h"
#include "previewview.h"
#include "privateview.h"
#include "settingsdialog.h"
#include "uiloader.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLayout>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSlider>
#include <QWebEngineView>

Q_LOGGING_CATEGORY(lcAssembly, "img.settings.assembly", QtWarningMsg)

namespace WindowAssembly {

namespace {

// Builds the settings window with the project's own dialog and preview in it.
class SettingsWindowLoader : public UiLoader
{
public:
    SettingsWindowLoader() { clearPluginPaths(); }

    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        QWidget *widget = nullptr;
        if (className == QLatin1String("QDialog") && !parent)
            widget = new SettingsDialog;
        else if (className == QLatin1String("QWebEngineView"))
            widget = new PreviewView(parent);
        else
            return UiLoader::createWidget(className, parent, name);
        widget->setObjectName(name);
        return widget;
    }
};

template<typename T> QPointer<T> child(QWidget *window, const char *name)
{
    return window->findChild<T *>(QLatin1String(name));
}

} // namespace

std::unique_ptr<SettingsDialog> loadWindow(const QString &path, QString *error)
{
    // The bundle's file may be a packager's link, but never a FIFO that would block the host.
    QFile description;
    if (!FileOps::openForReading(&description, path, FileOps::ReadLinks::Follow)) {
        *error = QStringLiteral("cannot be read");
        return nullptr;
    }
    SettingsWindowLoader loader;
    std::unique_ptr<QWidget> top(loader.load(&description));
    if (!qobject_cast<SettingsDialog *>(top.get())) {
        *error = loader.errorString();
        return nullptr;
    }
    return std::unique_ptr<SettingsDialog>(static_cast<SettingsDialog *>(top.release()));
}

PrivateView *loadImageChoice(const QString &path)
{
    std::unique_ptr<QWidget> top;
    if (!path.isEmpty()) {
        UiLoader loader;
        top.reset(loader.loadFile(path));
    }
    PrivateView *view = qobject_cast<PrivateView *>(top.get());
    if (view) {
        top.release();
    } else if (top) {
        const QList<PrivateView *> views = top->findChildren<PrivateView *>();
        if (!views.isEmpty()) {
            view = views.last();
            view->setParent(nullptr);
        }
    }
    if (!view) {
        qCWarning(lcAssembly) << "no image choice in" << path;
        return nullptr;
    }
    view->setObjectName(QStringLiteral("privateView"));
    return view;
}

Outlets findOutlets(QWidget *w)
{
    Outlets o;
    o.privateSettingView = child<QWidget>(w, "PrivateSettingView");
    o.webView = child<QWebEngineView>(w, "iWebView");
    o.positionDrawView = child<QWidget>(w, "positionDrawView");
    o.left = child<QLineEdit>(w, "txtLeft");
    o.top = child<QLineEdit>(w, "txtTop");
    o.right = child<QLineEdit>(w, "txtRight");
    o.bottom = child<QLineEdit>(w, "txtBottom");
    o.transparency = child<QLineEdit>(w, "txtTransparency");
    o.slider = child<QSlider>(w, "sldTrans");
    o.layers = w->findChild<QButtonGroup *>(QStringLiteral("matLayer"));
    o.defaultButton = child<QPushButton>(w, "btnDefault");
    o.cancelButton = child<QPushButton>(w, "btnCancel");
    o.okButton = child<QPushButton>(w, "btnOK");

    // A window description cannot give button ids; each layer button carries its layer number
    // in the dynamic property "layer".
    if (o.layers) {
        const QList<QAbstractButton *> buttons = o.layers->buttons();
        for (QAbstractButton *button : buttons) {
            bool ok = false;
            const int layer = button->property("layer").toInt(&ok);
            if (ok)
                o.layers->setId(button, layer);
        }
    }
    return o;
}

QString languageOf(const QString &descriptionPath)
{
    const QString folder = QFileInfo(descriptionPath).dir().dirName();
    if (!folder.endsWith(QLatin1String(".lproj")) || folder.size() == 6)
        return QStringLiteral("en");
    return folder.chopped(6);
}

QString languageTagOf(const QString &descriptionPath)
{
    return languageOf(descriptionPath).replace(QLatin1Char('_'), QLatin1Char('-'));
}

void replacePlaceholder(QWidget *placeholder, QWidget *view)
{
    view->setGeometry(placeholder->geometry());
    view->setMinimumSize(placeholder->minimumSize());
    view->setSizePolicy(placeholder->sizePolicy());
    if (view->toolTip().isEmpty())
        view->setToolTip(placeholder->toolTip());
    QWidget *superview = placeholder->parentWidget();
    view->setParent(superview);
    if (superview && superview->layout())
        delete superview->layout()->replaceWidget(placeholder, view);
    delete placeholder;
}

void placeCanvas(QWidget *window, QWidget *placeholder, QWidget *canvas, QSizeF proportions)
{
    if (!placeholder) {
        canvas->setParent(window);
        return;
    }
    // The canvas keeps the preview page's proportions, centred where the description puts it.
    auto *area = new AspectBox(proportions);
    area->setObjectName(QStringLiteral("positionArea"));
    canvas->setAccessibleName(placeholder->accessibleName());
    canvas->setAccessibleDescription(placeholder->accessibleDescription());
    canvas->setToolTip(placeholder->toolTip());
    area->setContent(canvas);
    replacePlaceholder(placeholder, area);
}

void arrangeKeyboardOrder(QWidget *window, const Outlets &outlets, QWidget *canvas,
                          QWidget *imageChoice)
{
    QList<QWidget *> order;
    const auto add = [&order](QWidget *widget) {
        if (widget && widget->focusPolicy() & Qt::TabFocus)
            order.append(widget);
    };
    add(canvas);
    for (QWidget *field :
         {outlets.left.data(), outlets.top.data(), outlets.right.data(), outlets.bottom.data()})
        add(field);
    add(outlets.slider);
    add(outlets.transparency);
    if (outlets.layers) {
        for (QAbstractButton *button : outlets.layers->buttons())
            add(button);
    }
    if (imageChoice) {
        // The image controls keep the order of their own description.
        for (QWidget *w = imageChoice->nextInFocusChain(); w != imageChoice;
             w = w->nextInFocusChain()) {
            if (imageChoice->isAncestorOf(w))
                add(w);
        }
    }
    add(outlets.defaultButton);
    add(outlets.okButton);
    add(outlets.cancelButton);
    // Qt 6.4 leaves the chain as it is when a widget of the pair is the last one before the
    // window; a stand-in at the end of the chain, gone afterwards, keeps every pair movable.
    QWidget end(window);
    end.setFocusPolicy(Qt::TabFocus);
    for (int i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order.at(i - 1), order.at(i));

    auto *group = window->findChild<QWidget *>(QStringLiteral("grpLayer"));
    QButtonGroup *layers = outlets.layers;
    if (!group || !layers)
        return;
    group->setFocusPolicy(Qt::TabFocus);
    const auto follow = [group, layers] {
        if (QAbstractButton *chosen = layers->checkedButton())
            group->setFocusProxy(chosen);
    };
    follow();
    QObject::connect(layers, &QButtonGroup::buttonToggled, group, follow);
}

void fitToScreen(QWidget *window)
{
    ColumnFit::keep(window->findChild<QScrollArea *>(QStringLiteral("scrSettings")));
    QScreen *screen = window->screen();
    if (!screen)
        return;
    const QSize room = screen->availableGeometry().size();
    const QSize frame = window->frameGeometry().size() - window->geometry().size();
    const QSize wanted = window->size().boundedTo(room - frame);
    window->resize(wanted.expandedTo(window->minimumSizeHint()));
}

} // namespace WindowAssembly
