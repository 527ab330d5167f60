// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <QFileDialog>

// An open or save file dialog behind one small object. The caller fills in the properties, names
// the owner's end method and calls runModel(); the dialog opens window-modal on the owner's
// window (a sheet on macOS). When the user confirms, the owner's end method is called with this
// panel on a new, detached thread; it should only read urls() there and hop back to the main
// thread for anything else. Cancelling calls nothing.
//
// Make panels with new and no parent: from runModel() on a panel looks after itself and is
// deleted once its dialog has closed and the owner's end method has returned.
class VelPanel : public QObject
{
    Q_OBJECT
public:
    explicit VelPanel(QObject *parent = nullptr);
    ~VelPanel() override;

    // Allowed file name extensions, without dots; empty allows every type.
    QStringList panelTypes() const { return m_panelTypes; }
    QStringList types() const { return m_panelTypes; }
    void setTypes(const QStringList &types);
    void addType(const QString &type);
    void removeType(const QString &type);

    bool isOpenPanel() const { return m_isOpenPanel; }
    void setIsOpenPanel(bool open) { m_isOpenPanel = open; }
    QString title() const { return m_title; }
    void setTitle(const QString &title) { m_title = title; }
    // The text of the confirming button.
    QString prompt() const { return m_prompt; }
    void setPrompt(const QString &prompt) { m_prompt = prompt; }
    QString nameFieldLabel() const { return m_nameFieldLabel; }
    void setNameFieldLabel(const QString &label) { m_nameFieldLabel = label; }
    QString message() const { return m_message; }
    void setMessage(const QString &message) { m_message = message; }
    // The folder the dialog opens in; the documents folder when nothing exists there.
    QString directory() const { return m_directory; }
    void setDirectory(const QString &directory) { m_directory = directory; }
    QString nameFieldStringValue() const { return m_nameFieldStringValue; }
    void setNameFieldStringValue(const QString &name) { m_nameFieldStringValue = name; }

    // Not owned. A widget owner carries the dialog on its window; the owner receives the end
    // method and must outlive the dialog.
    QObject *ower() const { return m_ower; }
    void setOwer(QObject *ower) { m_ower = ower; }

    // Kept for callers that set it; open panels always let files be chosen.
    bool canChooseFiles() const { return m_canChooseFiles; }
    void setCanChooseFiles(bool can) { m_canChooseFiles = can; }
    // Folders can be chosen too (open panels only).
    bool canChooseDirectories() const { return m_canChooseDirectories; }
    void setCanChooseDirectories(bool can) { m_canChooseDirectories = can; }
    bool allowsMultipleSelection() const { return m_allowsMultipleSelection; }
    void setAllowsMultipleSelection(bool allows) { m_allowsMultipleSelection = allows; }
    // Names with extensions outside panelTypes() may be confirmed.
    bool allowsOtherFileTypes() const { return m_allowsOtherFileTypes; }
    void setAllowsOtherFileTypes(bool allows) { m_allowsOtherFileTypes = allows; }

    // The name of the owner's invokable method (a slot or Q_INVOKABLE) that takes this panel,
    // e.g. "endBrowseImage" for endBrowseImage(VelPanel*). Without one the owner's
    // endOpenPanel(VelPanel*) is called for open panels; for save panels an owner that has
    // endOpenPanel is sent endSavePanel(VelPanel*), so save panels should name their method.
    QByteArray endPanelSelector() const { return m_endPanelSelector; }
    void setEndPanelSelector(const QByteArray &methodName) { m_endPanelSelector = methodName; }

    // What the user confirmed; filled on the main thread before the owner is called.
    QList<QUrl> urls() const { return m_urls; }
    QUrl url() const { return m_urls.value(0); }
    void setUrls(const QList<QUrl> &urls) { m_urls = urls; }

    // Schedules the dialog on the main thread and returns at once. Callable from any thread
    // (the panel's own).
    void runModel();

    // The dialog while it is open, else null.
    QFileDialog *dialog() const { return m_dialog; }

public slots:
    void startOpenPanel();
    void startSavePanel();

private:
    QFileDialog *createDialog();
    void showDialog(QFileDialog *dialog);
    void panelDidEnd(int result);
    // The owner's method that receives the confirmation, by signature; empty when none.
    QByteArray endMethodSignature() const;

    QStringList m_panelTypes;
    bool m_isOpenPanel = false;
    QString m_title;
    QString m_prompt;
    QString m_nameFieldLabel;
    QString m_message;
    QString m_directory;
    QString m_nameFieldStringValue;
    QPointer<QObject> m_ower;
    bool m_canChooseFiles = false;
    bool m_canChooseDirectories = false;
    bool m_allowsMultipleSelection = false;
    bool m_allowsOtherFileTypes = false;
    QByteArray m_endPanelSelector;
    QList<QUrl> m_urls;
    QPointer<QFileDialog> m_dialog;
    bool m_ended = false;
};
