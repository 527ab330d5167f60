// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "filestamp.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDomDocument>
#include <QDomElement>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <optional>

class PluginSettingsInfo;
class PrivateViewDelete;
class VelPanel;

// The panel of the settings window that holds the plugin's own setting: the image it shows,
// either a link or a local image file copied into the workspace. The choice is stored as the
// text of "src" (properties/extended/src) in the workspace's "img.xml".
//
// The view is the top-level widget of the "PrivateView" window description; its controls are
// found by object name when the display is loaded: the button group "mxtChoose" (ids are the
// tags: 0 link, 1 local file), the buttons "btnBrowse" and "btnSave", the fields "txtLink"
// and "txtFile", and the labels "lblThumbnail" and "lblImageFacts" that show a thumbnail and
// the size of the chosen file. The owner sets the workspace, itself and the bundle path, then calls
// loadDispInfo() once.
class PrivateView : public QWidget
{
    Q_OBJECT
public:
    enum Tag { LinkTag = 0, FileTag = 1 };

    explicit PrivateView(QWidget *parent = nullptr);
    ~PrivateView() override;

    QString workSpace() const { return m_workSpace; }
    void setWorkSpace(const QString &path) { m_workSpace = path; }
    // Not owned; the owner must outlive the view.
    PrivateViewDelete *ower() const { return m_ower; }
    void setOwer(PrivateViewDelete *ower) { m_ower = ower; }
    QString bundlePath() const { return m_bundlePath; }
    void setBundlePath(const QString &path) { m_bundlePath = path; }

    // Finds the controls, fills the workspace from the bundle where files are missing and shows
    // the setting stored in the workspace's img.xml.
    void loadDispInfo();

    // Stores the current choice into the workspace's img.xml (starting from the bundle's
    // data/img.xml when the workspace has none) and tells the owner. True when img.xml was
    // written; nothing happens without a workspace folder or a readable description.
    bool onSave(QObject *sender = nullptr);
    // How often a save parsed the workspace's img.xml: only when the file no longer holds what
    // this view last read or wrote.
    int descriptionParses() const { return m_descriptionParses; }
    // Writes the current choice into the "src" of a description tree.
    void savePrivateSetting(QDomElement root);
    // Shows the choice stored in a description tree.
    void loadPrivateSetting(QDomElement root);
    // Enables the controls of the chosen source: Browse for the file, the link field for links.
    void chooseLocate(int tag);
    // The tag of the chosen source, -1 without the button group.
    int selectedTag() const;

    // Runs the image chooser.
    void onBrowse(QObject *sender = nullptr);
    // Called by the file panel on its own thread when the user confirmed an image: hands the
    // path to refreshLocateFile on the main thread.
    Q_INVOKABLE void endBrowseImage(VelPanel *panel);
    // Copies the chosen image into the workspace and shows it; "Copy Failed!" when it cannot.
    void refreshLocateFile(const QString &path);
    // A file dropped or pasted onto the window: the local file is chosen and the file goes the
    // way of one confirmed in the image chooser.
    void takeImageFile(const QString &path);
    // A link dropped or pasted onto the window: the link is chosen and shown and saved as if
    // typed.
    void takeLink(const QString &link);
    // Copies a file into the workspace; true when it is there afterwards. A file of the same name
    // already there is kept under a time-stamp name.
    bool saveFile2Workspace(const QString &path);
    // Saves after each edit of the link that leaves it non-empty.
    void controlTextDidChange(QObject *sender);

    // The image the choice shows: the workspace's copy of the chosen file, as an absolute path;
    // empty when a link is chosen or no file is.
    QString chosenImageFile() const;
    // The link the choice shows; empty when the file is chosen.
    QString chosenLink() const;

    // The workspace files the book uses (at most one name, relative to the workspace): none
    // while a link is chosen, whatever file was chosen before.
    QStringList locateFiles() const { return selectedTag() == FileTag ? m_files : QStringList(); }
    // The preview leaves no clicked link alone: web links go to the system browser.
    bool ignoreOpenURL() const { return false; }

    // The description files: the workspace's img.xml and the bundle's data/img.xml.
    QString settingFileInWorkspace() const;
    QString settingFileInApp() const;

    // The folder the image chooser opens in: the documents folder, fixed on first use.
    static QString importFilePath();

    QButtonGroup *mxtChoose() const { return m_mxtChoose; }
    QAbstractButton *btnBrowse() const { return m_btnBrowse; }
    QAbstractButton *btnSave() const { return m_btnSave; }
    QLineEdit *txtLink() const { return m_txtLink; }
    QLineEdit *txtFile() const { return m_txtFile; }
    QLabel *lblThumbnail() const { return m_lblThumbnail; }
    QLabel *lblImageFacts() const { return m_lblImageFacts; }

signals:
    // After refreshLocateFile, on the main thread: the chosen path and whether it was copied.
    void locateFileRefreshed(const QString &path, bool copied);
    // The chosen image or link may have changed: another source, a new file, an edited link,
    // or the setting loaded.
    void imageChoiceChanged();

protected:
    void paintEvent(QPaintEvent *event) override;

private slots:
    void onChoose(int tag);
    void onBrowseClicked();
    void onSaveClicked();
    void onLinkEdited();
    // Beside the file's name: its thumbnail and size, or why there are none.
    void showImageFacts();

private:
    void findControls();
    // Marks the link field when the link will not show the image in a reader's book.
    void showLinkProblem();
    void selectTag(int tag);
    void showFile(const QString &name);
    QDomDocument workspaceDescription(const QString &path);
    void keepDescription(const QDomDocument &document, const QString &path, const FileStamp &stamp,
                         const QByteArray &bytes);
    void keepLoadedDescription(const QDomElement &root, const QString &path, const FileStamp &stamp,
                               const QByteArray &bytes);

    // The workspace's description as this view last read or wrote it, with the file's stamp and
    // the digest of its bytes then. A save while the file still holds those bytes edits this
    // tree instead of parsing the file again, which takes long for a large description.
    struct KeptDescription
    {
        QDomDocument document;
        QString path;
        FileStamp stamp;
        ContentDigest digest;
    };

    QPointer<QButtonGroup> m_mxtChoose;
    QPointer<QAbstractButton> m_btnBrowse;
    QPointer<QAbstractButton> m_btnSave;
    QPointer<QLineEdit> m_txtLink;
    QPointer<QLineEdit> m_txtFile;
    QPointer<QLabel> m_lblThumbnail;
    QPointer<QLabel> m_lblImageFacts;
    QString m_workSpace;
    PrivateViewDelete *m_ower = nullptr;
    QString m_bundlePath;
    std::unique_ptr<PluginSettingsInfo> m_settingsInfo;
    QStringList m_files;
    std::optional<KeptDescription> m_kept;
    int m_descriptionParses = 0;
};
