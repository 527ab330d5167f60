// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "pluginsettingsdelegate.h"

#include "aspectbox.h"
#include "backuprecovery.h"
#include "bundlepaths.h"
#include "canvasimage.h"
#include "columnfit.h"
#include "fileops.h"
#include "imagedroptarget.h"
#include "localisation.h"
#include "logalert.h"
#include "marginroom.h"
#include "modetimer.h"
#include "numbertext.h"
#include "onedecimal.h"
#include "pluginsettingsinfo.h"
#include "positionfile.h"
#include "positionview.h"
#include "previewcontroller.h"
#include "previewview.h"
#include "privateview.h"
#include "roommark.h"
#include "settingsbackup.h"
#include "settingsdialog.h"
#include "settingsworkspace.h"
#include "uiloader.h"
#include "utilityfunction.h"

#include <QAbstractButton>
#include <QAction>
#include <QButtonGroup>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QThread>
#include <QWebEngineView>

#include <climits>
#include <cstdio>

Q_LOGGING_CATEGORY(lcSettingsWindow, "img.settings.window", QtWarningMsg)

namespace {

const QString kIdentifier = QStringLiteral("img");
const QString kWindowDescription = QStringLiteral("PluginSettingsDelegate.ui");
const QString kPrivateViewDescription = QStringLiteral("PrivateView.ui");
// The preview page's proportions (its ".book" in preview.css), which the canvas keeps.
constexpr QSizeF kPageProportions(3, 4);
constexpr int kPreviewInterval = 330; // milliseconds between preview rebuild checks
// A workspace's backup copies this many entries at once, the whole of a usual workspace (the
// plugin's few files and some pictures); the rest of a larger one waits for the window's first
// preview, or this long at most.
constexpr qint64 kBackupEntriesBeforeHold = 64;
constexpr std::chrono::milliseconds kBackupHold(2000);

// Builds the settings window: its top-level dialog is a SettingsDialog, so that the close box
// reaches the controller, and the preview is a real web view.
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

// Takes a placeholder's place, size rules and position in its layout, then deletes it.
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

// The slider moves in hundredths of a percent when its description says so ("valueScale"), so
// that a position such as 37.26 exists on it.
double sliderScale(const QSlider *slider)
{
    bool ok = false;
    const double scale = slider->property("valueScale").toDouble(&ok);
    return ok && scale > 0 ? scale : 1.0;
}

// The backup's alerts: an English text is its own key in the strings table.
void alert(const QString &message, const QString &text)
{
    LogAlert::AlertOKWithMessage(loadAppString(message, message), loadAppString(text, text));
}

// The language of the window, from the language folder its description came from ("zh_CN.lproj"
// gives "zh_CN"); English where the folder names none.
QString languageOf(const QString &descriptionPath)
{
    const QString folder = QFileInfo(descriptionPath).dir().dirName();
    if (!folder.endsWith(QLatin1String(".lproj")) || folder.size() == 6)
        return QStringLiteral("en");
    return folder.chopped(6);
}

// As a BCP 47 tag, for the preview page: "zh_CN" gives "zh-CN".
QString languageTagOf(const QString &descriptionPath)
{
    return languageOf(descriptionPath).replace(QLatin1Char('_'), QLatin1Char('-'));
}

// The preview page's own messages in the window's language.
QHash<QString, QString> previewTexts()
{
    const auto localised = [](const char *key) {
        const QString text = QString::fromUtf8(key);
        return loadAppString(text, text);
    };
    return {
        {QStringLiteral("none"), localised(QT_TRANSLATE_NOOP("PluginLocale", "No image chosen"))},
        {QStringLiteral("broken"),
         localised(QT_TRANSLATE_NOOP("PluginLocale", "The image cannot be loaded"))},
        {QStringLiteral("nosettings"),
         localised(QT_TRANSLATE_NOOP("PluginLocale", "No settings to preview yet"))}};
}

QString oneDecimal(double value)
{
    return QString::asprintf("%.1f", value);
}

// Shows value with one decimal in field, touching the field only when its text changes.
void showNumber(QLineEdit *field, float value)
{
    if (!field)
        return;
    const QString text = OneDecimal::text(value);
    if (field->text() != text)
        field->setText(text);
}

} // namespace

PluginSettingsDelegate::PluginSettingsDelegate(const QString &languageCode,
                                               const QString &bundlePath, QObject *parent)
    : QObject(parent)
{
    if (!languageCode.isNull())
        setDefaultLanguageCode(languageCode);
    _bundlePath = bundlePath.isNull() ? BundlePaths::mainBundlePath() : bundlePath;
    setDefaultBundlePath(_bundlePath);

    m_windowDescriptionPath =
        localizedResourcePath(BundlePaths::resourceDirFor(_bundlePath), kWindowDescription);
    if (m_windowDescriptionPath.isEmpty())
        m_windowDescriptionPath = localizedResourcePath(
            BundlePaths::resourcePath(BundlePaths::mainBundlePath()), kWindowDescription);
    if (!m_windowDescriptionPath.isEmpty())
        initialParaments();
}

std::unique_ptr<PluginSettingsDelegate> PluginSettingsDelegate::create(const QString &languageCode,
                                                                       const QString &bundlePath)
{
    auto delegate = std::make_unique<PluginSettingsDelegate>(languageCode, bundlePath);
    if (delegate->windowDescriptionPath().isEmpty())
        return nullptr;
    return delegate;
}

PluginSettingsDelegate::~PluginSettingsDelegate()
{
    if (iWebView)
        iWebView->stop();
    ptRect = &m_initialRect; // the canvas's record goes with the canvas
    if (repeatTimer) {
        repeatTimer->stop();
        delete repeatTimer;
        repeatTimer = nullptr;
    }
    // The window's widgets call back into this object; they go while it is still whole.
    m_window.reset();
}

PositionView *PluginSettingsDelegate::positionView() const
{
    return _positionView;
}

void PluginSettingsDelegate::setPositionView(PositionView *view)
{
    _positionView = view;
}

PrivateView *PluginSettingsDelegate::privateView() const
{
    return m_privateView;
}

QWebEngineView *PluginSettingsDelegate::webView() const
{
    return iWebView;
}

void PluginSettingsDelegate::initialParaments()
{
    m_initialRect = PositionRect();
    ptRect = &m_initialRect;
    // The backup belongs to a workspace, which is known once the window loads: it is made then.
}

QDialog *PluginSettingsDelegate::window()
{
    if (!m_windowLoaded) {
        m_windowLoaded = true;
        if (!awakeFromNib())
            m_window.reset();
    }
    return m_window.get();
}

bool PluginSettingsDelegate::awakeFromNib()
{
    // The bundle's file may be a packager's link, but never a FIFO that would block the host.
    QFile description;
    if (!FileOps::openForReading(&description, m_windowDescriptionPath, FileOps::ReadLinks::Follow))
        return false;
    SettingsWindowLoader loader;
    std::unique_ptr<QWidget> top(loader.load(&description));
    auto *dialog = qobject_cast<SettingsDialog *>(top.get());
    if (!dialog) {
        qCWarning(lcSettingsWindow)
            << "no dialog in" << m_windowDescriptionPath << loader.errorString();
        return false;
    }
    top.release();
    m_window.reset(dialog);
    // Qt's own dialogs (the file panel) speak the window's language where the system has it.
    installQtTranslations(languageOf(m_windowDescriptionPath));
    connect(dialog, &SettingsDialog::closeRequested, this, [this] {
        isOKCancelButton = false;
        windowWillClose();
    });
    connect(dialog, &SettingsDialog::cancelRequested, this, &PluginSettingsDelegate::onCancel);

    findOutlets();
    const QString title =
        loadAppString(QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Plugin Settings - %@")),
                      QStringLiteral("Plugin Settings - %@"));
    dialog->setWindowTitle(
        QString(title).replace(QLatin1String("%@"), QLatin1String("Image Plugin")));
    wireOutlets();
    if (_workSpace.isEmpty())
        _workSpace = QDir(PluginSettingsInfo::getSavePluginPath()).filePath(kIdentifier);
    // What an earlier window left half-done is settled before anything touches the workspace.
    recoverWorkspace();
    loadPrivateView();
    checkWorkspace();
    loadSettings();

    // A window run modally previews while its modal session runs, alerts included; a modeless
    // one only while no modal session holds the application.
    repeatTimer = new ModeTimer(_isModalMode ? RunLoopMode::ModalPanel : RunLoopMode::Default,
                                kPreviewInterval, this);
    connect(repeatTimer, &ModeTimer::timeout, this, &PluginSettingsDelegate::timerRepeat);
    repeatTimer->start();

    // The preview decides the web view's navigations and loads; links are left to the preview
    // itself only when the private view says so.
    if (iWebView) {
        m_preview = new PreviewController(iWebView, this);
        m_preview->setIgnoreOpenURL(
            [this] { return m_privateView && m_privateView->ignoreOpenURL(); });
        m_preview->setPageLanguage(languageTagOf(m_windowDescriptionPath), previewTexts());
        connect(m_preview, &PreviewController::rebuildDone, this,
                &PluginSettingsDelegate::previewLoaded);
    }

    arrangeKeyboardOrder();
    wireHistory();
    // Image files and links dropped or pasted anywhere on the window go to the image choice.
    m_dropTarget = new ImageDropTarget(dialog, m_privateView);
    fitSettingsColumn();
    fitWindowToScreen();

    isChange = true; // the first tick loads the preview
    // A new workspace has no preview script, and OK removes it: written now, before the backup,
    // the first preview shows the position the canvas shows.
    if (SettingsWorkspace::previewScriptIsStale(_workSpace))
        writePreviewScript();
    saveInitialSettings();
    if (!_workSpace.isEmpty() &&
        QFileInfo::exists(QDir(_workSpace).filePath(QStringLiteral("settings.dat"))) &&
        m_privateView)
        m_privateView->onSave(nullptr);
    // Undo stops at the position the window opened with.
    m_history->reset(currentPosition());
    m_openingState = keptState();
    return true;
}

void PluginSettingsDelegate::findOutlets()
{
    QWidget *w = m_window.get();
    PrivateSettingView = w->findChild<QWidget *>(QStringLiteral("PrivateSettingView"));
    iWebView = w->findChild<QWebEngineView *>(QStringLiteral("iWebView"));
    positionDrawView = w->findChild<QWidget *>(QStringLiteral("positionDrawView"));
    txtLeft = w->findChild<QLineEdit *>(QStringLiteral("txtLeft"));
    txtTop = w->findChild<QLineEdit *>(QStringLiteral("txtTop"));
    txtRight = w->findChild<QLineEdit *>(QStringLiteral("txtRight"));
    txtBottom = w->findChild<QLineEdit *>(QStringLiteral("txtBottom"));
    txtTransparency = w->findChild<QLineEdit *>(QStringLiteral("txtTransparency"));
    sldTrans = w->findChild<QSlider *>(QStringLiteral("sldTrans"));
    matLayer = w->findChild<QButtonGroup *>(QStringLiteral("matLayer"));
    btnDefault = w->findChild<QPushButton *>(QStringLiteral("btnDefault"));
    btnCancel = w->findChild<QPushButton *>(QStringLiteral("btnCancel"));
    btnOK = w->findChild<QPushButton *>(QStringLiteral("btnOK"));

    // A window description cannot give button ids; each layer button carries its layer number
    // in the dynamic property "layer".
    if (matLayer) {
        const QList<QAbstractButton *> buttons = matLayer->buttons();
        for (QAbstractButton *button : buttons) {
            bool ok = false;
            const int layer = button->property("layer").toInt(&ok);
            if (ok)
                matLayer->setId(button, layer);
        }
    }
}

void PluginSettingsDelegate::wireOutlets()
{
    for (QLineEdit *field : {txtLeft.data(), txtTop.data(), txtRight.data(), txtBottom.data(),
                             txtTransparency.data()}) {
        if (!field)
            continue;
        connect(field, &QLineEdit::textEdited, this,
                [this, field] { controlTextDidChange(field); });
        // The fields hold digits, a sign and a decimal mark, which need no shaping; a drag sets
        // them on every step. Only the strategy is set: family and size still come from the
        // window.
        QFont digits;
        digits.setStyleStrategy(QFont::PreferNoShaping);
        field->setFont(digits);
    }
    if (sldTrans)
        connect(sldTrans, &QSlider::valueChanged, this, &PluginSettingsDelegate::onTransparency);
    if (btnDefault)
        connect(btnDefault, &QPushButton::clicked, this, &PluginSettingsDelegate::onDefaultSetting);
    if (btnCancel)
        connect(btnCancel, &QPushButton::clicked, this, &PluginSettingsDelegate::onCancel);
    if (btnOK)
        connect(btnOK, &QPushButton::clicked, this, &PluginSettingsDelegate::onOK);
}

void PluginSettingsDelegate::loadPrivateView()
{
    const QString path =
        localizedResourcePath(BundlePaths::resourceDirFor(_bundlePath), kPrivateViewDescription);
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
    top.reset();

    if (!view) {
        qCWarning(lcSettingsWindow) << "no private view in" << path;
        return;
    }
    m_privateView = view;
    view->setObjectName(QStringLiteral("privateView"));
    view->setWorkSpace(_workSpace);
    view->setOwer(this);
    view->setBundlePath(_bundlePath);
    connect(view, &PrivateView::imageChoiceChanged, this, &PluginSettingsDelegate::showChosenImage);
    view->loadDispInfo();
    if (PrivateSettingView)
        replacePlaceholder(PrivateSettingView, view);
    else
        view->setParent(m_window.get());
}

void PluginSettingsDelegate::createPositionView()
{
    auto *view = new PositionView;
    view->setObjectName(QStringLiteral("positionView"));
    view->setOwer(this);
    view->setPageProportions(kPageProportions);
    _positionView = view;
    showChosenImage();
    if (!positionDrawView) {
        view->setParent(m_window.get());
        return;
    }
    // The canvas keeps the preview page's proportions, centred where the description puts it.
    auto *area = new AspectBox(kPageProportions);
    area->setObjectName(QStringLiteral("positionArea"));
    view->setAccessibleName(positionDrawView->accessibleName());
    view->setAccessibleDescription(positionDrawView->accessibleDescription());
    view->setToolTip(positionDrawView->toolTip());
    area->setContent(view);
    replacePlaceholder(positionDrawView, area);
}

// The canvas shows what the image choice shows: the workspace's copy of the file, or the link's
// host. Read once per change of the choice, never during a drag.
void PluginSettingsDelegate::showChosenImage()
{
    if (!_positionView || !m_privateView)
        return;
    const CanvasImage::Picture picture = CanvasImage::read(m_privateView->chosenImageFile());
    _positionView->setImage(picture.image, picture.size);
    _positionView->setLinkHost(CanvasImage::linkHost(m_privateView->chosenLink()));
}

void PluginSettingsDelegate::arrangeKeyboardOrder()
{
    QList<QWidget *> order;
    const auto add = [&order](QWidget *widget) {
        if (widget && widget->focusPolicy() & Qt::TabFocus)
            order.append(widget);
    };
    add(_positionView);
    for (QWidget *field : {txtLeft.data(), txtTop.data(), txtRight.data(), txtBottom.data()})
        add(field);
    add(sldTrans);
    add(txtTransparency);
    if (matLayer) {
        for (QAbstractButton *button : matLayer->buttons())
            add(button);
    }
    if (m_privateView) {
        // The image controls keep the order of their own description.
        for (QWidget *w = m_privateView->nextInFocusChain(); w != m_privateView.data();
             w = w->nextInFocusChain()) {
            if (m_privateView->isAncestorOf(w))
                add(w);
        }
    }
    add(btnDefault);
    add(btnOK);
    add(btnCancel);
    // Qt 6.4 leaves the chain as it is when a widget of the pair is the last one before the
    // window; a stand-in at the end of the chain, gone afterwards, keeps every pair movable.
    QWidget end(m_window.get());
    end.setFocusPolicy(Qt::TabFocus);
    for (int i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order.at(i - 1), order.at(i));
    followLayerChoiceWithFocus();
}

// The layer label names the group of layer buttons; its mnemonic, like Tab, goes to the button
// that is chosen, and never chooses one itself.
void PluginSettingsDelegate::followLayerChoiceWithFocus()
{
    auto *group = m_window->findChild<QWidget *>(QStringLiteral("grpLayer"));
    if (!group || !matLayer)
        return;
    group->setFocusPolicy(Qt::TabFocus);
    const auto follow = [group, this] {
        if (QAbstractButton *chosen = matLayer->checkedButton())
            group->setFocusProxy(chosen);
    };
    follow();
    connect(matLayer, &QButtonGroup::buttonToggled, group, follow);
}

void PluginSettingsDelegate::fitSettingsColumn()
{
    ColumnFit::keep(m_window->findChild<QScrollArea *>(QStringLiteral("scrSettings")));
}

void PluginSettingsDelegate::fitWindowToScreen()
{
    QScreen *screen = m_window->screen();
    if (!screen)
        return;
    const QSize room = screen->availableGeometry().size();
    const QSize frame = m_window->frameGeometry().size() - m_window->geometry().size();
    const QSize wanted = m_window->size().boundedTo(room - frame);
    m_window->resize(wanted.expandedTo(m_window->minimumSizeHint()));
}

// ---- position file and backup

void PluginSettingsDelegate::loadSettings()
{
    if (_workSpace.isEmpty())
        return;
    loadSettingFromFile(SettingsWorkspace::settingsFileToLoad(_workSpace));
}

void PluginSettingsDelegate::loadSettingFromFile(const QString &path)
{
    // A missing, unreadable or short file is the all-zero position. The bundle's defaults may
    // be a packager's link; in the workspace a link is data, never followed.
    const bool inBundle = !_bundlePath.isEmpty() && path.startsWith(_bundlePath + QLatin1Char('/'));
    const PositionRect values = PositionFile::read(path, inBundle ? FileOps::ReadLinks::Follow
                                                                  : FileOps::ReadLinks::NoFollow)
                                    .value_or(PositionRect());
    *ptRect = values;

    if (!_positionView && m_window)
        createPositionView();
    if (_positionView)
        _positionView->setPositionRect(*ptRect);
    onChangePositionView();
    showTransparency(ptRect->transparency());
    selectLayer(ptRect->layer());
}

void PluginSettingsDelegate::saveGlobalSettings()
{
    if (!_workSpace.isEmpty() && FileOps::isDir(_workSpace)) {
        // The record takes its layer from the chosen button, which every save reads.
        ptRect->setLayer(chosenLayer());
        // What saveToFile() writes, formatted once: the script takes its position from the same
        // text, read as a reader of the file would.
        const QByteArray text = ptRect->toText();
        const bool saved = FileOps::writeAtomically(
            QDir(_workSpace).filePath(QStringLiteral("settings.dat")), text);
        previewFiles().refreshPage();
        previewFiles().writeScript(saved ? PositionFile::parse(QString::fromUtf8(text))
                                         : std::nullopt);
    }
    isChange = true;
}

void PluginSettingsDelegate::writePreviewScript()
{
    previewFiles().writeScript();
}

SettingsWorkspace::PreviewFiles &PluginSettingsDelegate::previewFiles()
{
    // Kept between saves so that what has not changed is not read again; a host may point the
    // controller at another workspace or bundle.
    if (!m_previewFiles || m_previewFiles->workSpace() != _workSpace ||
        m_previewFiles->bundlePath() != _bundlePath)
        m_previewFiles =
            std::make_unique<SettingsWorkspace::PreviewFiles>(_workSpace, _bundlePath, kIdentifier);
    return *m_previewFiles;
}

void PluginSettingsDelegate::saveInitialSettings()
{
    if (_workSpace.isEmpty() || m_backup)
        return;
    m_backup = std::make_unique<SettingsBackup>(_workSpace);
    _backupSettingPath = m_backup->path();
    if (m_backup->state() == SettingsBackup::State::Unavailable) {
        // Said once the window is up, so that the author sees what it is about.
        QMetaObject::invokeMethod(this, &PluginSettingsDelegate::reportBackupFailure,
                                  Qt::QueuedConnection);
        return;
    }
    // The image is taken in the background; the window works meanwhile, and every change it
    // makes to the workspace first puts the entry's opening state into the backup. The copy of
    // a large workspace waits until the window is up with its first preview, which it would
    // only slow down.
    m_backup->start(
        [this](SettingsBackup::State end) {
            if (end != SettingsBackup::State::Complete)
                QMetaObject::invokeMethod(this, &PluginSettingsDelegate::reportBackupFailure,
                                          Qt::QueuedConnection);
        },
        kBackupHold, kBackupEntriesBeforeHold);
    connect(this, &PluginSettingsDelegate::previewLoaded, this,
            &PluginSettingsDelegate::letBackupProceed, Qt::UniqueConnection);
}

void PluginSettingsDelegate::letBackupProceed()
{
    if (m_backup)
        m_backup->proceed();
}

void PluginSettingsDelegate::reportBackupFailure()
{
    // Without a workspace there is nothing to back up; the author has heard of the workspace.
    if (m_problems & WorkspaceUnavailable)
        return;
    m_problems |= BackupUnavailable;
    if (m_closed || m_backupFailureShown)
        return;
    qCWarning(lcSettingsWindow) << "no backup of the workspace:" << _workSpace;
    m_backupFailureShown = true;
    tell(
        QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "The workspace could not be backed up.")),
        QStringLiteral(QT_TRANSLATE_NOOP(
            "PluginLocale", "Your changes are still saved as you make them, but Cancel will not be "
                            "able to undo them.")));
}

void PluginSettingsDelegate::undoSettings()
{
    if (!m_backup)
        return;
    SettingsBackup *backup = m_backup.get();
    const SettingsBackup::Outcome outcome = restoreWithProgress(
        [backup](const SettingsBackup::Progress &progress) { return backup->restore(progress); });
    m_backup.reset();
    // A window without a workspace saved nothing, so there is nothing to miss.
    if (outcome == SettingsBackup::Outcome::NothingToUndo && !(m_problems & WorkspaceUnavailable))
        tell(QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Nothing could be undone.")),
             QStringLiteral(QT_TRANSLATE_NOOP(
                 "PluginLocale",
                 "There is no complete backup of the workspace, so it stays as it is.")));
    else if (outcome == SettingsBackup::Outcome::Failed)
        reportRestoreFailure();
}

void PluginSettingsDelegate::reportRestoreFailure()
{
    m_problems |= RestoreFailed;
    qCWarning(lcSettingsWindow) << "the workspace could not be restored:" << _workSpace;
    tell(
        QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "The workspace could not be restored.")),
        QStringLiteral(QT_TRANSLATE_NOOP(
            "PluginLocale", "It stays as it is. The backup is kept and offered again the next time "
                            "the window opens.")));
}

void PluginSettingsDelegate::tell(const QString &message, const QString &text)
{
    if (!m_quiet)
        alert(message, text);
}

void PluginSettingsDelegate::checkWorkspace()
{
    const QFileInfo folder(_workSpace);
    if (!_workSpace.isEmpty() && folder.isDir() && folder.isWritable())
        return;
    m_problems |= WorkspaceUnavailable;
    qCWarning(lcSettingsWindow) << "the workspace cannot be written; nothing will be saved:"
                                << _workSpace;
    // Said once the window is up, so that the author sees what it is about.
    QMetaObject::invokeMethod(this, &PluginSettingsDelegate::reportWorkspaceFailure,
                              Qt::QueuedConnection);
}

void PluginSettingsDelegate::reportWorkspaceFailure()
{
    if (m_closed)
        return;
    tell(QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "The workspace could not be created.")),
         QStringLiteral(
             QT_TRANSLATE_NOOP("PluginLocale", "Changes made in this window cannot be saved.")));
}

bool PluginSettingsDelegate::isWindowOpen() const
{
    return m_windowLoaded && m_window && !m_closed;
}

void PluginSettingsDelegate::endWindow(CloseMode mode)
{
    if (!isWindowOpen())
        return;
    m_quiet = true;
    isOKCancelButton = true; // no question
    _closeMode = mode;
    closeWindow();
}

void PluginSettingsDelegate::clearBackupSettings()
{
    if (m_backup)
        m_backup->clear();
    m_backup.reset();
}

SettingsBackup::Outcome PluginSettingsDelegate::restoreWithProgress(const RestoreWork &work)
{
    // The restore runs on a thread of its own so that the window keeps painting; the loop that
    // waits for it takes no input, and a progress dialog appears when it takes more than half a
    // second.
    const QString label =
        QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Restoring the workspace…"));
    QProgressDialog dialog(loadAppString(label, label), QString(), 0, 0,
                           m_window && m_window->isVisible() ? m_window.get() : nullptr);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setCancelButton(nullptr);
    dialog.setMinimumDuration(500);
    dialog.setAutoClose(false);
    dialog.setAutoReset(false);
    SettingsBackup::Outcome outcome = SettingsBackup::Outcome::NothingToUndo;
    QEventLoop loop;
    std::unique_ptr<QThread> thread(QThread::create([&] {
        outcome = work([&dialog](qint64 done, qint64 total) {
            QMetaObject::invokeMethod(
                &dialog,
                [&dialog, done, total] {
                    dialog.setMaximum(int(qMin<qint64>(total, INT_MAX)));
                    dialog.setValue(int(qMin<qint64>(done, total)));
                },
                Qt::QueuedConnection);
        });
    }));
    connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    thread->start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread->wait();
    return outcome;
}

void PluginSettingsDelegate::recoverWorkspace()
{
    const QList<BackupRecovery::Pending> pending = BackupRecovery::settle(_workSpace);
    if (pending.isEmpty())
        return;
    bool goBack = m_recoveryAnswer == GoBack;
    if (m_recoveryAnswer == AskAuthor) {
        const QString message = QStringLiteral(QT_TRANSLATE_NOOP(
            "PluginLocale", "The settings window closed unexpectedly last time."));
        const QString text = QStringLiteral(QT_TRANSLATE_NOOP(
            "PluginLocale", "Go back to the workspace as it was before that window "
                            "opened, or keep it as it is now?"));
        const QString keep = QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Keep As It Is"));
        const QString back = QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Go Back"));
        // Keeping changes nothing, so it is what Return and Escape do.
        goBack = LogAlert::AlertWithButtons(
                     loadAppString(message, message), loadAppString(text, text),
                     {loadAppString(keep, keep), loadAppString(back, back)}, 0) == 1;
    }
    // The oldest backup holds the workspace as it was before the first window that died; the
    // others go either way, so that none is left behind.
    const QString oldest = pending.first().backupPath;
    for (const BackupRecovery::Pending &entry : pending) {
        if (!goBack || entry.backupPath != oldest)
            BackupRecovery::keep(entry.backupPath);
    }
    if (!goBack)
        return;
    const QString workSpace = _workSpace;
    const SettingsBackup::Outcome outcome =
        restoreWithProgress([workSpace, oldest](const SettingsBackup::Progress &progress) {
            return BackupRecovery::goBack(workSpace, oldest, progress);
        });
    if (outcome != SettingsBackup::Outcome::Restored)
        reportRestoreFailure();
}

// ---- buttons and closing

bool PluginSettingsDelegate::confirmPublishingWithoutRoom()
{
    const MarginRoom room = MarginRoom::of(*ptRect);
    if (!room.noRoomAcross && !room.noRoomDown)
        return true;
    const auto localised = [](const char *key) {
        const QString text = QString::fromUtf8(key);
        return loadAppString(text, text);
    };
    const QString why =
        room.noRoomAcross
            ? localised(QT_TRANSLATE_NOOP(
                  "PluginLocale",
                  "The left and right margins add up to 100 % or more: the image has no width "
                  "left on the page."))
            : localised(QT_TRANSLATE_NOOP(
                  "PluginLocale",
                  "The top and bottom margins add up to 100 % or more: the image has no height "
                  "left on the page."));
    // Publish is the default only on purpose: Return and Escape both go back to editing.
    enum { KeepEditingButton, PublishButton };
    return LogAlert::AlertWithButtons(
               localised(QT_TRANSLATE_NOOP("PluginLocale",
                                           "The book will not show the image. Publish anyway?")),
               why,
               {localised(QT_TRANSLATE_NOOP("PluginLocale", "Keep Editing")),
                localised(QT_TRANSLATE_NOOP("PluginLocale", "Publish Anyway"))},
               KeepEditingButton) == PublishButton;
}

void PluginSettingsDelegate::onOK()
{
    // Margins that leave the image no room publish an image no reader sees: asked once per OK.
    if (!m_quiet && !confirmPublishingWithoutRoom())
        return;
    if (m_privateView)
        m_privateView->onSave(nullptr);
    const QStringList located = m_privateView ? m_privateView->locateFiles() : QStringList();
    if (!_workSpace.isEmpty()) {
        PluginSettingsInfo info;
        info.setWorkSpace(_workSpace);
        info.setIdentifier(kIdentifier);
        info.setBundlePath(_bundlePath);
        info.generateJSConfig(QStringLiteral("files/plugin"));
        SettingsWorkspace::writeFilesList(_workSpace, located);
        // The published book needs nothing else: the preview files go too.
        SettingsWorkspace::cleanToKeepList(_workSpace,
                                           SettingsWorkspace::keepList(located, kIdentifier));
    }
    isOKCancelButton = true;
    _closeMode = Apply;
    closeWindow();
}

void PluginSettingsDelegate::onCancel()
{
    isOKCancelButton = true;
    _closeMode = Discard;
    closeWindow();
}

void PluginSettingsDelegate::onDefaultSetting()
{
    QString path =
        QDir(_bundlePath).filePath(QStringLiteral("Contents/Resources/data/defaultsettings.dat"));
    if (!QFileInfo::exists(path) && !_workSpace.isEmpty())
        path = QDir(_workSpace).filePath(QStringLiteral("defaultsettings.dat"));
    if (!QFileInfo::exists(path)) {
        std::fputs("defaultsettings.dat not found!\n", stdout);
        std::fflush(stdout);
        return;
    }
    // Only the position goes back to its defaults; the private setting stays.
    loadSettingFromFile(path);
    saveGlobalSettings();
    isChange = true;
    recordEdit(PositionHistory::Edit::Default);
}

void PluginSettingsDelegate::closeWindow()
{
    windowWillClose();
}

QString PluginSettingsDelegate::keptState() const
{
    QString choice;
    if (m_privateView) {
        const int tag = m_privateView->selectedTag();
        const QLineEdit *field =
            tag == PrivateView::LinkTag ? m_privateView->txtLink() : m_privateView->txtFile();
        choice = QString::number(tag) + QLatin1Char(':') + (field ? field->text() : QString());
    }
    return QString::fromUtf8(currentPosition().toText()) + QLatin1Char('\n') + choice;
}

int PluginSettingsDelegate::askHowToClose()
{
    // Nothing to apply: Discard gives back the opening's workspace, which is what the author has.
    if (keptState() == m_openingState)
        return Discard;
    const auto localised = [](const char *key) {
        const QString text = QString::fromUtf8(key);
        return loadAppString(text, text);
    };
    // Escape and the question's close box keep the window open: an author who closes the
    // question has not chosen to lose the session's work.
    enum { ApplyButton, DiscardButton, KeepEditingButton };
    const int answer = LogAlert::AlertWithButtons(
        localised(QT_TRANSLATE_NOOP("PluginLocale", "Do you want to apply the settings?")),
        QString(),
        {localised(QT_TRANSLATE_NOOP("PluginLocale", "Apply")),
         localised(QT_TRANSLATE_NOOP("PluginLocale", "Discard Changes")),
         localised(QT_TRANSLATE_NOOP("PluginLocale", "Keep Editing"))},
        KeepEditingButton);
    switch (answer) {
    case ApplyButton:
        return Apply;
    case DiscardButton:
        return Discard;
    default:
        return -1;
    }
}

void PluginSettingsDelegate::windowWillClose()
{
    if (m_closed)
        return;
    m_closed = true; // the question below runs a modal loop; nothing may close twice meanwhile
    if (!isOKCancelButton) {
        const int answer = askHowToClose();
        if (answer < 0) {
            m_closed = false; // the author goes on editing: the window stays as it is
            return;
        }
        _closeMode = answer;
    }
    if (repeatTimer) {
        repeatTimer->stop();
        delete repeatTimer;
        repeatTimer = nullptr;
    }
    // Closing by the close box and answering OK keeps the live state as it is: no book script,
    // no file list, no clean-up. Only the OK button prepares the workspace for the book.
    if (_closeMode == Apply)
        clearBackupSettings();
    else
        undoSettings();
    _isCloseBundle = true;
    // A host may delete this controller in the dialog's finished(): nothing after the dialog
    // has said so may touch it.
    const QPointer<PluginSettingsDelegate> alive(this);
    const int closeMode = _closeMode;
    if (m_window)
        m_window->done(closeMode);
    if (alive)
        emit windowClosed(closeMode); // the last use of this object: a listener may delete it
}

// ---- fields, slider, canvas

// The history's kind of a keystroke in field.
PositionHistory::Edit PluginSettingsDelegate::fieldEdit(const QLineEdit *field) const
{
    if (field == txtLeft)
        return PositionHistory::Edit::TypeLeft;
    if (field == txtTop)
        return PositionHistory::Edit::TypeTop;
    if (field == txtRight)
        return PositionHistory::Edit::TypeRight;
    if (field == txtBottom)
        return PositionHistory::Edit::TypeBottom;
    return PositionHistory::Edit::TypeTransparency;
}

QString PluginSettingsDelegate::checkStringFrom(const QString &text)
{
    if (text.endsWith(QLatin1Char(',')))
        return UtilityFunction::checkFloatValueStringFrom(text.chopped(1) + QLatin1Char('.'));
    return UtilityFunction::checkFloatValueStringFrom(text);
}

void PluginSettingsDelegate::controlTextDidChange(QLineEdit *field)
{
    if (!field)
        return;
    void (PositionRect::*setter)(float) = nullptr;
    if (field == txtLeft)
        setter = &PositionRect::setLeft;
    else if (field == txtTop)
        setter = &PositionRect::setTop;
    else if (field == txtRight)
        setter = &PositionRect::setRight;
    else if (field == txtBottom)
        setter = &PositionRect::setBottom;
    else if (field != txtTransparency)
        return;

    const QString filtered = checkStringFrom(field->text());
    if (filtered != field->text())
        field->setText(filtered);
    const float value = NumberText::floatValue(filtered);
    if (setter) {
        (ptRect->*setter)(value);
        showMarginRoom();
    } else {
        ptRect->setTransparency(value);
        if (sldTrans) {
            const QSignalBlocker quiet(sldTrans);
            sldTrans->setValue(qRound(NumberText::doubleValue(filtered) * sliderScale(sldTrans)));
        }
    }
    if (_positionView) {
        _positionView->setPositionRect(*ptRect);
        _positionView->update();
    }
    saveGlobalSettings();
    recordEdit(fieldEdit(field));
}

void PluginSettingsDelegate::onTransparency()
{
    if (!sldTrans)
        return;
    const double value = sldTrans->value() / sliderScale(sldTrans);
    if (txtTransparency)
        txtTransparency->setText(oneDecimal(value));
    ptRect->setTransparency(float(value));
    if (_positionView)
        _positionView->setPositionRect(*ptRect);
    saveGlobalSettings();
    recordEdit(PositionHistory::Edit::Slider);
}

void PluginSettingsDelegate::onChangePositionView()
{
    if (_positionView)
        ptRect = _positionView->positionRect();
    // A drag step moves one or two margins by a fraction of a point: most fields keep their
    // text, and setting it again would cost a relayout and a repaint of the field for nothing.
    showNumber(txtLeft, ptRect->left());
    showNumber(txtTop, ptRect->top());
    showNumber(txtRight, ptRect->right());
    showNumber(txtBottom, ptRect->bottom());
    showMarginRoom();
}

void PluginSettingsDelegate::showMarginRoom()
{
    const MarginRoom room = MarginRoom::of(*ptRect);
    // Every drag step comes here, and a pair's room seldom changes within one: the marks are
    // touched only when it does.
    if (m_shownRoom == room)
        return;
    m_shownRoom = room;
    const QString across = QStringLiteral(QT_TRANSLATE_NOOP(
        "PluginLocale",
        "The left and right margins add up to 100 % or more: the image has no width left on the "
        "page."));
    const QString down = QStringLiteral(QT_TRANSLATE_NOOP(
        "PluginLocale",
        "The top and bottom margins add up to 100 % or more: the image has no height left on the "
        "page."));
    // Every drag step comes here: the texts are looked up only for a pair that has no room.
    const QString whyAcross = room.noRoomAcross ? loadAppString(across, across) : QString();
    const QString whyDown = room.noRoomDown ? loadAppString(down, down) : QString();
    for (QLineEdit *field : {txtLeft.data(), txtRight.data()})
        RoomMark::setMarked(field, room.noRoomAcross, whyAcross);
    for (QLineEdit *field : {txtTop.data(), txtBottom.data()})
        RoomMark::setMarked(field, room.noRoomDown, whyDown);
}

void PluginSettingsDelegate::didChangedPositionView()
{
    saveGlobalSettings();
    const bool keys = _positionView && _positionView->lastEdit() == PositionView::Edit::Keys;
    recordEdit(keys ? PositionHistory::Edit::Keys : PositionHistory::Edit::Gesture);
}

void PluginSettingsDelegate::showTransparency(float value)
{
    if (sldTrans) {
        const QSignalBlocker quiet(sldTrans);
        sldTrans->setValue(qRound(double(value) * sliderScale(sldTrans)));
    }
    if (txtTransparency)
        txtTransparency->setText(oneDecimal(value));
}

void PluginSettingsDelegate::selectLayer(int layer)
{
    if (!matLayer)
        return;
    // A layer that no button carries leaves the choice as it was.
    m_selectingLayer = true;
    if (QAbstractButton *button = matLayer->button(layer))
        button->setChecked(true);
    m_selectingLayer = false;
}

int PluginSettingsDelegate::chosenLayer() const
{
    const int layer = matLayer ? matLayer->checkedId() : -1;
    return layer < 0 ? 0 : layer;
}

PositionRect PluginSettingsDelegate::currentPosition() const
{
    PositionRect position = *ptRect;
    position.setLayer(chosenLayer());
    return position;
}

// ---- undo and redo

void PluginSettingsDelegate::wireHistory()
{
    m_history = new PositionHistory([this](const PositionRect &p) { applyPosition(p); }, this);
    addHistoryActions();
    // Choosing a layer is an edit like any other: saved at once and a step of its own.
    if (matLayer)
        connect(matLayer, &QButtonGroup::idToggled, this, [this](int, bool checked) {
            if (!checked || m_selectingLayer)
                return;
            saveGlobalSettings();
            recordEdit(PositionHistory::Edit::Layer);
        });
    // A slider drag is one transparency change, however many values it passes.
    if (sldTrans) {
        connect(sldTrans, &QSlider::sliderPressed, m_history, &PositionHistory::endBurst);
        connect(sldTrans, &QSlider::sliderReleased, m_history, &PositionHistory::endBurst);
    }
    const QList<QWidget *> watched = {txtLeft,         txtTop,   txtRight,     txtBottom,
                                      txtTransparency, sldTrans, _positionView};
    for (QWidget *widget : watched) {
        if (widget)
            widget->installEventFilter(this);
    }
}

void PluginSettingsDelegate::addHistoryActions()
{
    const QString undo = QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Undo"));
    const QString redo = QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Redo"));
    m_undoAction = new QAction(loadAppString(undo, undo), m_window.get());
    m_undoAction->setObjectName(QStringLiteral("actionUndo"));
    m_undoAction->setShortcuts(QKeySequence::Undo);
    m_redoAction = new QAction(loadAppString(redo, redo), m_window.get());
    m_redoAction->setObjectName(QStringLiteral("actionRedo"));
    // Ctrl+Shift+Z redoes on every platform, also where the platform's own key is Ctrl+Y.
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    const QKeySequence shiftZ(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    if (!redoKeys.contains(shiftZ))
        redoKeys.append(shiftZ);
    m_redoAction->setShortcuts(redoKeys);
    for (QAction *action : {m_undoAction, m_redoAction}) {
        action->setShortcutContext(Qt::WindowShortcut);
        action->setEnabled(false);
        m_window->addAction(action);
    }
    connect(m_undoAction, &QAction::triggered, m_history, &PositionHistory::undo);
    connect(m_redoAction, &QAction::triggered, m_history, &PositionHistory::redo);
    connect(m_history, &PositionHistory::canUndoChanged, m_undoAction, &QAction::setEnabled);
    connect(m_history, &PositionHistory::canRedoChanged, m_redoAction, &QAction::setEnabled);
    if (_positionView)
        _positionView->setHistoryActions(m_undoAction, m_redoAction);
}

void PluginSettingsDelegate::recordEdit(PositionHistory::Edit edit)
{
    if (m_history)
        m_history->record(edit, currentPosition());
}

void PluginSettingsDelegate::applyPosition(const PositionRect &position)
{
    *ptRect = position;
    if (_positionView)
        _positionView->setPositionRect(position);
    onChangePositionView();
    showTransparency(position.transparency());
    // The position file takes its layer from the chosen button: it is chosen before the save.
    selectLayer(position.layer());
    saveGlobalSettings();
}

bool PluginSettingsDelegate::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut && m_history) {
        m_history->endBurst();
    } else if (event->type() == QEvent::ShortcutOverride && qobject_cast<QLineEdit *>(watched) &&
               m_undoAction && m_redoAction) {
        // Every keystroke in a position field is already a saved step of the window's history,
        // so the field's own undo would only repeat it out of step with the file. Refusing the
        // override lets the window's shortcut have the key.
        const auto *key = static_cast<QKeyEvent *>(event);
        const QKeySequence pressed(
            QKeyCombination(key->modifiers() & ~Qt::KeypadModifier, Qt::Key(key->key())));
        if (m_undoAction->shortcuts().contains(pressed) ||
            m_redoAction->shortcuts().contains(pressed))
            return true;
    }
    return QObject::eventFilter(watched, event);
}

// ---- preview

void PluginSettingsDelegate::timerRepeat()
{
    // Edits that arrive within one tick are shown by a single rebuild.
    if (isChange) {
        isChange = false;
        refreshPreview();
    }
}

void PluginSettingsDelegate::refreshPreview()
{
    if (!m_preview)
        return;
    m_preview->setWorkSpace(_workSpace);
    m_preview->refreshPreview();
}
