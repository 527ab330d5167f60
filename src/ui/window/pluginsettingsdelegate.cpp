// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "pluginsettingsdelegate.h"

#include "bundlepaths.h"
#include "canvasimage.h"
#include "closingquestions.h"
#include "fileops.h"
#include "historyfilter.h"
#include "imagedroptarget.h"
#include "localisation.h"
#include "marginroom.h"
#include "modetimer.h"
#include "pluginsettingsinfo.h"
#include "positionfile.h"
#include "positionview.h"
#include "previewcontroller.h"
#include "privateview.h"
#include "settingsdialog.h"
#include "settingsworkspace.h"
#include "windowassembly.h"
#include "workspacelayout.h"
#include "workspacesession.h"
#include "workspacewriter.h"

#include <QAction>
#include <QButtonGroup>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPointer>
#include <QPushButton>
#include <QSlider>
#include <QWebEngineView>

#include <cstdio>

Q_LOGGING_CATEGORY(lcSettingsWindow, "img.settings.window", QtWarningMsg)

namespace {

const QString kIdentifier = WorkspaceLayout::Identifier;
const QString kWindowDescription = QStringLiteral("PluginSettingsDelegate.ui");
const QString kPrivateViewDescription = QStringLiteral("PrivateView.ui");
// The preview page's proportions (its ".book" in preview.css), which the canvas keeps.
constexpr QSizeF kPageProportions(3, 4);
constexpr int kPreviewInterval = 330; // milliseconds between preview rebuild checks

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

} // namespace

PluginSettingsDelegate::PluginSettingsDelegate(const QString &languageCode,
                                               const QString &bundlePath, QObject *parent)
    : QObject(parent)
    , m_writer(new WorkspaceWriter(this))
    , m_session(new WorkspaceSession(this))
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
    QString error;
    m_window = WindowAssembly::loadWindow(m_windowDescriptionPath, &error);
    if (!m_window) {
        qCWarning(lcSettingsWindow) << "no dialog in" << m_windowDescriptionPath << error;
        return false;
    }
    SettingsDialog *dialog = m_window.get();
    // Qt's own dialogs (the file panel) speak the window's language where the system has it.
    installQtTranslations(WindowAssembly::languageOf(m_windowDescriptionPath));
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
    m_session->setWorkSpace(_workSpace);
    m_session->setWindow(dialog);
    m_session->recover(m_recoveryAnswer == GoBack       ? WorkspaceSession::Recovery::GoBack
                       : m_recoveryAnswer == KeepAsItIs ? WorkspaceSession::Recovery::KeepAsItIs
                                                        : WorkspaceSession::Recovery::AskAuthor);
    loadPrivateView();
    m_session->checkWorkspace();
    loadSettings();

    // A window run modally previews while its modal session runs, alerts included; a modeless
    // one only while no modal session holds the application.
    repeatTimer = new ModeTimer(_isModalMode ? RunLoopMode::ModalPanel : RunLoopMode::Default,
                                kPreviewInterval, this);
    connect(repeatTimer, &ModeTimer::timeout, this, &PluginSettingsDelegate::timerRepeat);
    connect(m_writer, &WorkspaceWriter::generationWritten, this,
            &PluginSettingsDelegate::refreshWhenWritten);
    repeatTimer->start();

    // The preview decides the web view's navigations and loads; links are left to the preview
    // itself only when the private view says so.
    if (iWebView) {
        m_preview = new PreviewController(iWebView, this);
        m_preview->setIgnoreOpenURL(
            [this] { return m_privateView && m_privateView->ignoreOpenURL(); });
        m_preview->setPageLanguage(WindowAssembly::languageTagOf(m_windowDescriptionPath),
                                   previewTexts());
        connect(m_preview, &PreviewController::rebuildDone, this,
                &PluginSettingsDelegate::previewLoaded);
    }

    WindowAssembly::arrangeKeyboardOrder(m_window.get(), outlets(), _positionView, m_privateView);
    wireHistory();
    // Image files and links dropped or pasted anywhere on the window go to the image choice.
    m_dropTarget = new ImageDropTarget(dialog, m_privateView);
    WindowAssembly::fitToScreen(m_window.get());

    isChange = true; // the first tick loads the preview
    // A new workspace has no preview script, and OK removes it: written now, before the backup,
    // the first preview shows the position the canvas shows.
    if (SettingsWorkspace::previewScriptIsStale(_workSpace))
        writePreviewScript();
    // The backup's image begins with the workspace as the opening left it.
    waitForSaves();
    saveInitialSettings();
    if (!_workSpace.isEmpty() &&
        QFileInfo::exists(QDir(_workSpace).filePath(WorkspaceLayout::PositionFile)) &&
        m_privateView)
        m_privateView->onSave(nullptr);
    // Undo stops at the position the window opened with.
    m_history->reset(currentPosition());
    m_openingState = keptState();
    return true;
}

void PluginSettingsDelegate::findOutlets()
{
    const WindowAssembly::Outlets o = WindowAssembly::findOutlets(m_window.get());
    PrivateSettingView = o.privateSettingView;
    iWebView = o.webView;
    positionDrawView = o.positionDrawView;
    txtLeft = o.left;
    txtTop = o.top;
    txtRight = o.right;
    txtBottom = o.bottom;
    txtTransparency = o.transparency;
    sldTrans = o.slider;
    matLayer = o.layers;
    btnDefault = o.defaultButton;
    btnCancel = o.cancelButton;
    btnOK = o.okButton;
    m_form = PositionForm(o);
}

WindowAssembly::Outlets PluginSettingsDelegate::outlets() const
{
    return {
        PrivateSettingView, iWebView, positionDrawView, txtLeft,    txtTop,    txtRight, txtBottom,
        txtTransparency,    sldTrans, matLayer,         btnDefault, btnCancel, btnOK};
}

void PluginSettingsDelegate::wireOutlets()
{
    for (QLineEdit *field : {txtLeft.data(), txtTop.data(), txtRight.data(), txtBottom.data(),
                             txtTransparency.data()}) {
        if (!field)
            continue;
        connect(field, &QLineEdit::textEdited, this,
                [this, field] { controlTextDidChange(field); });
    }
    m_form.prepareNumberFields();
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
    PrivateView *view = WindowAssembly::loadImageChoice(
        localizedResourcePath(BundlePaths::resourceDirFor(_bundlePath), kPrivateViewDescription));
    if (!view)
        return;
    m_privateView = view;
    view->setWorkSpace(_workSpace);
    view->setOwer(this);
    view->setBundlePath(_bundlePath);
    connect(view, &PrivateView::imageChoiceChanged, this, &PluginSettingsDelegate::showChosenImage);
    view->loadDispInfo();
    if (PrivateSettingView)
        WindowAssembly::replacePlaceholder(PrivateSettingView, view);
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
    WindowAssembly::placeCanvas(m_window.get(), positionDrawView, view, kPageProportions);
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
    m_form.showTransparency(ptRect->transparency());
    m_form.selectLayer(ptRect->layer());
}

void PluginSettingsDelegate::saveGlobalSettings()
{
    if (!_workSpace.isEmpty()) {
        // The record takes its layer from the chosen button, which every save reads.
        ptRect->setLayer(m_form.chosenLayer());
        // What saveToFile() writes, formatted once: the script takes its position from the same
        // text, read as a reader of the file would. The writer does the rest off this thread;
        // the position file and its script are one save, so they never show two states.
        const QByteArray text = ptRect->toText();
        const QString workSpace = _workSpace;
        const std::shared_ptr<SettingsWorkspace::PreviewFiles> files = previewFiles();
        m_writer->submit(WorkspaceLayout::PositionFile, [workSpace, text, files] {
            if (!FileOps::isDir(workSpace))
                return;
            const bool saved = FileOps::writeAtomically(
                QDir(workSpace).filePath(WorkspaceLayout::PositionFile), text);
            files->refreshPage();
            files->writeScript(saved ? PositionFile::parse(QString::fromUtf8(text)) : std::nullopt);
        });
    }
    isChange = true;
}

void PluginSettingsDelegate::writePreviewScript()
{
    const std::shared_ptr<SettingsWorkspace::PreviewFiles> files = previewFiles();
    m_writer->submit(WorkspaceLayout::PreviewScript, [files] { files->writeScript(); });
}

std::shared_ptr<SettingsWorkspace::PreviewFiles> PluginSettingsDelegate::previewFiles()
{
    // Kept between saves so that what has not changed is not read again; a host may point the
    // controller at another workspace or bundle. Only the writer's thread uses it.
    if (!m_previewFiles || m_previewFiles->workSpace() != _workSpace ||
        m_previewFiles->bundlePath() != _bundlePath)
        m_previewFiles =
            std::make_shared<SettingsWorkspace::PreviewFiles>(_workSpace, _bundlePath, kIdentifier);
    return m_previewFiles;
}

void PluginSettingsDelegate::waitForSaves()
{
    m_writer->waitForAll();
}

void PluginSettingsDelegate::saveInitialSettings()
{
    m_session->setWorkSpace(_workSpace);
    m_session->takeBackup();
    _backupSettingPath = m_session->backupPath();
    // The copy of a large workspace waits until the window is up with its first preview, which
    // it would only slow down.
    connect(this, &PluginSettingsDelegate::previewLoaded, m_session,
            &WorkspaceSession::letBackupProceed, Qt::UniqueConnection);
}

void PluginSettingsDelegate::undoSettings()
{
    m_session->undoChanges();
}

void PluginSettingsDelegate::clearBackupSettings()
{
    m_session->keepChanges();
}

SettingsBackup *PluginSettingsDelegate::backup() const
{
    return m_session->backup();
}

PluginSettingsDelegate::Problems PluginSettingsDelegate::problems() const
{
    return Problems::fromInt(int(m_session->problems()));
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
    m_session->setQuiet(true);
    isOKCancelButton = true; // no question
    _closeMode = mode;
    closeWindow();
}

// ---- buttons and closing

bool PluginSettingsDelegate::confirmPublishingWithoutRoom()
{
    return ClosingQuestions::publishWithoutRoom(MarginRoom::of(*ptRect));
}

void PluginSettingsDelegate::onOK()
{
    // Margins that leave the image no room publish an image no reader sees: asked once per OK.
    if (!m_quiet && !confirmPublishingWithoutRoom())
        return;
    if (m_privateView)
        m_privateView->onSave(nullptr);
    // The book is made of what was saved: every save is written first.
    waitForSaves();
    m_session->setWorkSpace(_workSpace);
    m_session->publish(_bundlePath, kIdentifier,
                       m_privateView ? m_privateView->locateFiles() : QStringList());
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
    QString path = QDir(_bundlePath).filePath(WorkspaceLayout::BundleDefaultPositionFile);
    if (!QFileInfo::exists(path) && !_workSpace.isEmpty())
        path = QDir(_workSpace).filePath(WorkspaceLayout::DefaultPositionFile);
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
    switch (ClosingQuestions::askHowToClose()) {
    case ClosingQuestions::Answer::Apply:
        return Apply;
    case ClosingQuestions::Answer::Discard:
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
    m_session->setWindowClosed(true);
    if (!isOKCancelButton) {
        const int answer = askHowToClose();
        if (answer < 0) {
            m_closed = false; // the author goes on editing: the window stays as it is
            m_session->setWindowClosed(false);
            return;
        }
        _closeMode = answer;
    }
    if (repeatTimer) {
        repeatTimer->stop();
        delete repeatTimer;
        repeatTimer = nullptr;
    }
    // What is still being written lands before the workspace is kept or restored.
    waitForSaves();
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

QString PluginSettingsDelegate::checkStringFrom(const QString &text)
{
    return PositionForm::filteredNumber(text);
}

void PluginSettingsDelegate::controlTextDidChange(QLineEdit *field)
{
    if (!m_form.readField(field, ptRect))
        return;
    if (_positionView) {
        _positionView->setPositionRect(*ptRect);
        _positionView->update();
    }
    saveGlobalSettings();
    recordEdit(m_form.editOf(field));
}

void PluginSettingsDelegate::onTransparency()
{
    if (!sldTrans)
        return;
    m_form.readSlider(ptRect);
    if (_positionView)
        _positionView->setPositionRect(*ptRect);
    saveGlobalSettings();
    recordEdit(PositionHistory::Edit::Slider);
}

void PluginSettingsDelegate::onChangePositionView()
{
    if (_positionView)
        ptRect = _positionView->positionRect();
    m_form.showMargins(*ptRect);
}

void PluginSettingsDelegate::didChangedPositionView()
{
    saveGlobalSettings();
    const bool keys = _positionView && _positionView->lastEdit() == PositionView::Edit::Keys;
    recordEdit(keys ? PositionHistory::Edit::Keys : PositionHistory::Edit::Gesture);
}

PositionRect PluginSettingsDelegate::currentPosition() const
{
    PositionRect position = *ptRect;
    position.setLayer(m_form.chosenLayer());
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
            if (!checked || m_form.isSelectingLayer())
                return;
            saveGlobalSettings();
            recordEdit(PositionHistory::Edit::Layer);
        });
    // A slider drag is one transparency change, however many values it passes.
    if (sldTrans) {
        connect(sldTrans, &QSlider::sliderPressed, m_history, &PositionHistory::endBurst);
        connect(sldTrans, &QSlider::sliderReleased, m_history, &PositionHistory::endBurst);
    }
    auto *filter = new HistoryFilter(m_history, m_undoAction, m_redoAction, this);
    filter->watch({txtLeft, txtTop, txtRight, txtBottom, txtTransparency, sldTrans, _positionView});
}

void PluginSettingsDelegate::addHistoryActions()
{
    const QString undo = QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Undo"));
    const QString redo = QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "Redo"));
    const PositionHistory::Actions actions = m_history->addWindowActions(
        m_window.get(), loadAppString(undo, undo), loadAppString(redo, redo));
    m_undoAction = actions.undo;
    m_redoAction = actions.redo;
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
    m_form.showTransparency(position.transparency());
    // The position file takes its layer from the chosen button: it is chosen before the save.
    m_form.selectLayer(position.layer());
    saveGlobalSettings();
}

// ---- preview

void PluginSettingsDelegate::timerRepeat()
{
    // Edits that arrive within one tick are shown by a single rebuild, of the state saved last.
    if (isChange) {
        isChange = false;
        m_previewGeneration = m_writer->submitted();
        m_previewDue = true;
    }
    refreshWhenWritten();
}

void PluginSettingsDelegate::refreshWhenWritten()
{
    // The page reads the files when it loads: it loads once they hold the state to be shown,
    // never half of it, and never one older than a state it has shown.
    if (!m_previewDue || m_writer->written() < m_previewGeneration)
        return;
    m_previewDue = false;
    refreshPreview();
}

void PluginSettingsDelegate::refreshPreview()
{
    if (!m_preview)
        return;
    m_preview->setWorkSpace(_workSpace);
    m_preview->refreshPreview();
}
