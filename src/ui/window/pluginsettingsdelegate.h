// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "positionform.h"
#include "positionhistory.h"
#include "positionrect.h"
#include "postionviewdelete.h"
#include "privateviewdelete.h"
#include "settingsbackup.h"
#include "settingsworkspace.h"
#include "windowassembly.h"
#include "workspacesession.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWebEngineView>

#include <functional>
#include <memory>

class ImageDropTarget;
class ModeTimer;
class PositionView;
class PreviewController;
class PrivateView;
class QAction;
class QButtonGroup;
class QDialog;
class QLineEdit;
class QPushButton;
class QSlider;
class QWidget;
class SettingsDialog;
class WorkspaceWriter;

// The image plugin's settings window, the bundle's entry point. The host creates it with a
// language code and the bundle's path, says whether it runs the window modally, shows window()
// and reads closeMode() and isCloseBundle() once the window has closed.
//
// The window is built from the window description "PluginSettingsDelegate.ui" of the bundle's
// language folder; its controls are found by object name. Every edit is saved into the workspace
// at once; a copy of the whole workspace taken when the window opens makes Cancel possible.
// Closing always ends the window with a stop code: QDialog::done(closeMode()) ends a modal run
// (exec() returns it) and windowClosed(closeMode()) tells a host that shows it modelessly.
class PluginSettingsDelegate : public QObject, public PostionViewDelete, public PrivateViewDelete
{
    Q_OBJECT

public:
    enum CloseMode { Discard = 0, Apply = 1 };
    // What to do with the backup of an earlier window on the same workspace that died before
    // the author decided: ask the author, or answer without asking (hosts and tests).
    enum RecoveryAnswer { AskAuthor = 0, GoBack = 1, KeepAsItIs = 2 };
    // Why the window cannot do all of its work; a set of flags. The author is told each one in
    // an alert as well, except when the host closes the window itself.
    enum Problem {
        NoProblem = WorkspaceSession::NoProblem,
        WorkspaceUnavailable = WorkspaceSession::WorkspaceUnavailable,
        BackupUnavailable = WorkspaceSession::BackupUnavailable,
        RestoreFailed = WorkspaceSession::RestoreFailed,
    };
    Q_DECLARE_FLAGS(Problems, Problem)

    // A null languageCode keeps the process-wide language set before; a null bundlePath falls
    // back to the host's own bundle. Creates the empty backup folder of this opening.
    PluginSettingsDelegate(const QString &languageCode, const QString &bundlePath,
                           QObject *parent = nullptr);
    ~PluginSettingsDelegate() override;
    // As the constructor, but null when the bundle has no window description to load.
    static std::unique_ptr<PluginSettingsDelegate> create(const QString &languageCode,
                                                          const QString &bundlePath);

    // The window description this controller loads; empty when there is none.
    QString windowDescriptionPath() const { return m_windowDescriptionPath; }
    // The window, loaded with the settings on first use; null when it cannot be loaded.
    QDialog *window();

    QString workSpace() const { return _workSpace; }
    void setWorkSpace(const QString &path) { _workSpace = path; }
    QString bundlePath() const { return _bundlePath; }
    void setBundlePath(const QString &path) { _bundlePath = path; }
    bool isCloseBundle() const { return _isCloseBundle; }
    void setIsCloseBundle(bool value) { _isCloseBundle = value; }
    bool isModalMode() const { return _isModalMode; }
    void setIsModalMode(bool value) { _isModalMode = value; }
    // The host says whether it runs the window modally; call it before window().
    void setModalMode(bool modal) { _isModalMode = modal; }
    int closeMode() const { return _closeMode; }
    void setCloseMode(int mode) { _closeMode = mode; }
    QString backupSettingPath() const { return _backupSettingPath; }
    void setBackupSettingPath(const QString &path) { _backupSettingPath = path; }
    RecoveryAnswer recoveryAnswer() const { return m_recoveryAnswer; }
    // Call it before window(): the question is asked while the window loads.
    void setRecoveryAnswer(RecoveryAnswer answer) { m_recoveryAnswer = answer; }
    // The backup of this opening; null before the window has loaded.
    SettingsBackup *backup() const;
    PositionView *positionView() const;
    void setPositionView(PositionView *view);
    PrivateView *privateView() const;
    QWebEngineView *webView() const;
    // Takes image files and links dropped or pasted onto the window; null before it loads.
    ImageDropTarget *dropTarget() const { return m_dropTarget; }
    // The live preview on webView(), once the window is loaded (null without a web view).
    PreviewController *previewController() const { return m_preview; }

    // The position shown in the fields and on the canvas: the canvas's own record once the
    // settings have been loaded.
    const PositionRect &position() const { return *ptRect; }
    // The position as the window shows it: the record, with the layer that is chosen.
    PositionRect currentPosition() const;
    // Undo and redo of this window's position edits, back to the opening position at most; null
    // before the window has loaded. The actions carry the window-wide shortcuts.
    PositionHistory *history() const { return m_history; }
    QAction *undoAction() const { return m_undoAction; }
    QAction *redoAction() const { return m_redoAction; }

    // The preview must be rebuilt on the next timer tick.
    bool isChanged() const { return isChange; }
    void setChanged(bool changed) { isChange = changed; }

    // Position file and backup.
    void loadSettings();
    void loadSettingFromFile(const QString &path);
    void saveGlobalSettings() override;
    void saveInitialSettings();
    // Blocks until every save handed to the workspace's writer has been written; closing does
    // it before it keeps, restores or publishes the workspace. Invokable, so that a host that
    // reads the workspace while the window is open can call it through object().
    Q_INVOKABLE void waitForSaves();
    void undoSettings();
    void clearBackupSettings();

    // The canvas reports a drag step, and the end of a gesture.
    void onChangePositionView() override;
    void didChangedPositionView() override;

    // Ends an open window from code without asking the author and without alerts, for a host
    // that shuts down: Apply keeps the workspace as saved live (as the close box answered OK
    // does), Discard restores it (as Cancel does). Nothing happens when no window is open.
    void endWindow(CloseMode mode);
    bool isWindowOpen() const;
    Problems problems() const;

    // The keystroke filter of the number fields: a comma just typed is the decimal point, as
    // German or French authors type it; a last character that is neither a digit nor the first
    // point is dropped.
    static QString checkStringFrom(const QString &text);

public slots:
    void onOK();
    void onCancel();
    void onDefaultSetting();
    void onTransparency();
    // A number field was edited by the user.
    void controlTextDidChange(QLineEdit *field);
    // The window closes: stops the timer, asks when the close box was used, keeps or restores
    // the workspace and ends the window with closeMode().
    void windowWillClose();

signals:
    // The window has closed with this stop code (1 apply, 0 discard).
    void windowClosed(int closeMode);
    // A rebuild of the preview is done: the page has loaded and its forced reload has finished,
    // so it shows the settings as they were when the rebuild began.
    void previewLoaded();

private slots:
    void timerRepeat();

private:
    void initialParaments();
    bool awakeFromNib();
    void findOutlets();
    void wireOutlets();
    void loadPrivateView();
    void createPositionView();
    void showChosenImage();
    WindowAssembly::Outlets outlets() const;
    void wireHistory();
    void addHistoryActions();
    // A settled edit becomes a step of the history.
    void recordEdit(PositionHistory::Edit edit);
    // Shows a position of the history everywhere and saves it as an edit does.
    void applyPosition(const PositionRect &position);
    void refreshPreview();
    void closeWindow();
    // What the author would keep: the position in its file form and the image choice as its
    // source and text. The close box asks only when this differs from the opening's.
    QString keptState() const;
    // The close box's question: Apply, Discard, or -1 to keep editing.
    int askHowToClose();
    // OK with margins that leave the image no room: whether the author publishes anyway.
    bool confirmPublishingWithoutRoom();
    // Writes the preview's "config.js" from the description and the position file.
    void writePreviewScript();
    // A rebuild of the preview waits until the writer has written the state it shows.
    void refreshWhenWritten();
    // The preview's files of the current workspace, with what the last save read.
    std::shared_ptr<SettingsWorkspace::PreviewFiles> previewFiles();

    // Outlets of the window description.
    QPointer<QWidget> PrivateSettingView;
    QPointer<QWebEngineView> iWebView;
    QPointer<QWidget> positionDrawView;
    QPointer<PositionView> _positionView;
    QPointer<PrivateView> m_privateView;
    QPointer<QLineEdit> txtLeft;
    QPointer<QLineEdit> txtTop;
    QPointer<QLineEdit> txtRight;
    QPointer<QLineEdit> txtBottom;
    QPointer<QLineEdit> txtTransparency;
    QPointer<QSlider> sldTrans;
    QPointer<QButtonGroup> matLayer;
    QPointer<QPushButton> btnDefault;
    QPointer<QPushButton> btnCancel;
    QPointer<QPushButton> btnOK;

    QString _workSpace;
    QString _bundlePath;
    bool _isCloseBundle = false;
    bool _isModalMode = false;
    int _closeMode = Discard;
    ModeTimer *repeatTimer = nullptr;
    bool isChange = false;
    // The record created with the controller until the canvas's own record takes its place.
    PositionRect m_initialRect;
    PositionRect *ptRect = &m_initialRect;
    QString _backupSettingPath;
    bool isOKCancelButton = false;
    // The position controls bound to the record.
    PositionForm m_form;
    PositionHistory *m_history = nullptr; // a child of this controller
    QAction *m_undoAction = nullptr;      // children of the window
    QAction *m_redoAction = nullptr;
    // The preview on iWebView: its page, navigation policy and the pending forced reload.
    PreviewController *m_preview = nullptr;  // a child of this controller
    ImageDropTarget *m_dropTarget = nullptr; // a child of the window

    std::shared_ptr<SettingsWorkspace::PreviewFiles> m_previewFiles;
    // Every save goes through it, off the window's thread and in order.
    WorkspaceWriter *m_writer; // a child of this controller
    // The preview rebuild that is due waits for this generation of saves.
    quint64 m_previewGeneration = 0;
    bool m_previewDue = false;
    RecoveryAnswer m_recoveryAnswer = AskAuthor;
    // The workspace as a whole: backup, recovery, restore, publishing and their problems.
    WorkspaceSession *m_session; // a child of this controller
    bool m_quiet = false;        // the host closes the window: no alerts

    QString m_windowDescriptionPath;
    std::unique_ptr<SettingsDialog> m_window;
    bool m_windowLoaded = false;
    bool m_closed = false;
    QString m_openingState; // keptState() once the window had loaded
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PluginSettingsDelegate::Problems)
