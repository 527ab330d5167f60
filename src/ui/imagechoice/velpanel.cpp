// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "velpanel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMetaMethod>
#include <QStandardPaths>
#include <QThread>

#include <exception>
#include <thread>

Q_LOGGING_CATEGORY(lcPanel, "img.panel", QtWarningMsg)

namespace {

bool hasAllowedType(const QString &path, const QStringList &types)
{
    const QString suffix = QFileInfo(path).suffix();
    return types.contains(suffix, Qt::CaseInsensitive);
}

QStringList namePatterns(const QStringList &types)
{
    QStringList patterns;
    for (const QString &type : types) {
        patterns << QStringLiteral("*.") + type.toLower();
        if (type.toLower() != type.toUpper())
            patterns << QStringLiteral("*.") + type.toUpper();
    }
    patterns.removeDuplicates();
    return patterns;
}

// Qt's dialog holding the panel's rules at the moment of confirming: the types that may be
// confirmed, folders when they may be chosen, and the extension of a saved name.
class PanelDialog : public QFileDialog
{
public:
    PanelDialog(QWidget *parent, const QStringList &types, bool allowsOtherTypes,
                bool choosesDirectories)
        : QFileDialog(parent)
        , m_types(types)
        , m_allowsOtherTypes(allowsOtherTypes)
        , m_choosesDirectories(choosesDirectories)
    {}

    void accept() override
    {
        const QStringList chosen = selectedFiles();
        if (acceptMode() == AcceptOpen)
            acceptOpen(chosen);
        else
            acceptSave(chosen);
    }

private:
    bool restrictsTypes() const { return !m_types.isEmpty() && !m_allowsOtherTypes; }

    void acceptOpen(const QStringList &chosen)
    {
        if (chosen.isEmpty())
            return;
        bool allFolders = true;
        for (const QString &path : chosen)
            allFolders = allFolders && QFileInfo(path).isDir();
        if (allFolders && m_choosesDirectories) {
            QDialog::accept();
            return;
        }
        if (!allFolders && restrictsTypes()) {
            for (const QString &path : chosen) {
                if (!QFileInfo(path).isDir() && !hasAllowedType(path, m_types)) {
                    qCDebug(lcPanel) << "refused a file of another type" << path;
                    return;
                }
            }
        }
        // Files of an allowed type, or a folder to go into.
        QFileDialog::accept();
    }

    void acceptSave(const QStringList &chosen)
    {
        if (chosen.size() == 1 && restrictsTypes() && !QFileInfo(chosen.first()).isDir() &&
            !hasAllowedType(chosen.first(), m_types)) {
            const QString name =
                QFileInfo(chosen.first()).fileName() + QLatin1Char('.') + m_types.first();
            if (auto *field = findChild<QLineEdit *>(QStringLiteral("fileNameEdit")))
                field->setText(name);
            else
                selectFile(name);
        }
        QFileDialog::accept();
    }

    QStringList m_types;
    bool m_allowsOtherTypes;
    bool m_choosesDirectories;
};

QString documentsFolder()
{
    const QStringList found = QStandardPaths::standardLocations(QStandardPaths::DocumentsLocation);
    const QString folder =
        found.isEmpty() ? QDir::homePath() + QStringLiteral("/Documents") : found.first();
    return QDir::cleanPath(folder);
}

} // namespace

VelPanel::VelPanel(QObject *parent)
    : QObject(parent)
{}

VelPanel::~VelPanel()
{
    if (m_dialog)
        m_dialog->deleteLater();
}

void VelPanel::setTypes(const QStringList &types)
{
    m_panelTypes.clear();
    m_panelTypes.append(types);
}

void VelPanel::addType(const QString &type)
{
    m_panelTypes.append(type);
}

void VelPanel::removeType(const QString &type)
{
    m_panelTypes.removeAll(type);
}

void VelPanel::runModel()
{
    QThread *mainThread = QCoreApplication::instance()->thread();
    if (thread() != mainThread)
        moveToThread(mainThread);
    // The queued call keeps the work on the main thread and lets the caller return at once.
    if (m_isOpenPanel)
        QMetaObject::invokeMethod(this, &VelPanel::startOpenPanel, Qt::QueuedConnection);
    else
        QMetaObject::invokeMethod(this, &VelPanel::startSavePanel, Qt::QueuedConnection);
}

QFileDialog *VelPanel::createDialog()
{
    auto *owner = qobject_cast<QWidget *>(m_ower.data());
    auto *dialog = new PanelDialog(owner ? owner->window() : nullptr, m_panelTypes,
                                   m_allowsOtherFileTypes, m_canChooseDirectories);
    dialog->setWindowModality(owner ? Qt::WindowModal : Qt::ApplicationModal);
    if (!m_panelTypes.isEmpty()) {
        QStringList filters{namePatterns(m_panelTypes).join(QLatin1Char(' '))};
        if (m_allowsOtherFileTypes)
            filters << QStringLiteral("*");
        dialog->setNameFilters(filters);
    }
    if (!m_title.isNull())
        dialog->setWindowTitle(m_title);
    if (!m_prompt.isNull())
        dialog->setLabelText(QFileDialog::Accept, m_prompt);
    if (!m_nameFieldLabel.isNull())
        dialog->setLabelText(QFileDialog::FileName, m_nameFieldLabel);
    if (!m_message.isNull()) {
        if (auto *grid = qobject_cast<QGridLayout *>(dialog->layout())) {
            auto *label = new QLabel(m_message, dialog);
            label->setObjectName(QStringLiteral("velPanelMessage"));
            label->setWordWrap(true);
            grid->addWidget(label, grid->rowCount(), 0, 1, grid->columnCount());
        }
    }
    const QString start = QFileInfo::exists(m_directory) ? m_directory : documentsFolder();
    dialog->setDirectory(start);
    if (!m_nameFieldStringValue.isNull())
        dialog->selectFile(m_nameFieldStringValue);
    return dialog;
}

void VelPanel::showDialog(QFileDialog *dialog)
{
    m_dialog = dialog;
    connect(dialog, &QFileDialog::finished, this, &VelPanel::panelDidEnd);
    // A dialog that goes with its window before it ends takes the panel with it.
    connect(dialog, &QObject::destroyed, this, [this] {
        if (!m_ended)
            deleteLater();
    });
    dialog->open();
}

void VelPanel::startOpenPanel()
{
    QFileDialog *dialog = createDialog();
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    // Files can always be chosen, whatever canChooseFiles says.
    dialog->setFileMode(m_allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                  : QFileDialog::ExistingFile);
    showDialog(dialog);
}

void VelPanel::startSavePanel()
{
    QFileDialog *dialog = createDialog();
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    if (!m_allowsOtherFileTypes && !m_panelTypes.isEmpty())
        dialog->setDefaultSuffix(m_panelTypes.first());
    showDialog(dialog);
}

QByteArray VelPanel::endMethodSignature() const
{
    const QMetaObject *meta = m_ower->metaObject();
    const auto has = [meta](const QByteArray &name) {
        return meta->indexOfMethod(QByteArray(name + "(VelPanel*)").constData()) >= 0;
    };
    if (!m_endPanelSelector.isEmpty())
        return m_endPanelSelector + "(VelPanel*)";
    // Save panels ask for endOpenPanel and send endSavePanel; owners of save panels name their
    // method explicitly.
    if (has("endOpenPanel"))
        return m_isOpenPanel ? QByteArray("endOpenPanel(VelPanel*)")
                             : QByteArray("endSavePanel(VelPanel*)");
    return {};
}

void VelPanel::panelDidEnd(int result)
{
    QFileDialog *dialog = m_dialog;
    m_dialog = nullptr;
    m_ended = true;
    if (dialog)
        dialog->deleteLater();
    if (result != QDialog::Accepted || !m_ower || !dialog) {
        deleteLater();
        return;
    }
    m_urls = dialog->selectedUrls();
    const QByteArray signature = endMethodSignature();
    const int index = signature.isEmpty() ? -1 : m_ower->metaObject()->indexOfMethod(signature);
    if (index < 0) {
        qCDebug(lcPanel) << "owner has no end method" << signature;
        deleteLater();
        return;
    }
    QObject *owner = m_ower;
    const QMetaMethod method = owner->metaObject()->method(index);
    try {
        std::thread([this, owner, method] {
            method.invoke(owner, Qt::DirectConnection, Q_ARG(VelPanel *, this));
            deleteLater();
        }).detach();
    } catch (const std::exception &error) {
        qCWarning(lcPanel) << "could not start the end call:" << error.what();
        deleteLater();
    }
}
