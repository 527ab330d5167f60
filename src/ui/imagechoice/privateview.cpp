// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "privateview.h"

#include "bundlepaths.h"
#include "fileops.h"
#include "framepainter.h"
#include "imagedrop.h"
#include "imagefacts.h"
#include "linkcheck.h"
#include "localisation.h"
#include "logalert.h"
#include "pluginsettingsinfo.h"
#include "privateviewdelete.h"
#include "roommark.h"
#include "simplecell.h"
#include "velpanel.h"
#include "workspacelayout.h"
#include "xmlhelpers.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QTextStream>
#include <QXmlStreamReader>

#include <chrono>
#include <exception>

Q_LOGGING_CATEGORY(lcPrivateView, "img.privateview", QtWarningMsg)

namespace {

const QString kIdentifier = WorkspaceLayout::Identifier;

// The description's bytes parsed as a document, or a null document when they are not valid
// UTF-8 or are damaged.
QDomDocument readDescription(const QByteArray &bytes)
{
    if (!bytes.isValidUtf8())
        return {};
    return parseDescriptionXml(bytes);
}

// The same for the file at path; null too when it is missing (or not a regular file, or a link
// unless links is Follow).
QDomDocument readDescription(const QString &path, FileOps::ReadLinks links)
{
    QByteArray bytes;
    if (!FileOps::readAll(path, &bytes, links))
        return {};
    return readDescription(bytes);
}

// Whether bytes give the same tree read as UTF-8 text as read as bytes: when their declaration
// names UTF-8 or no encoding, or they have none. The declaration comes first or not at all.
bool readsAlikeAsText(const QByteArray &bytes)
{
    QXmlStreamReader reader(bytes.left(512));
    reader.readNext();
    if (reader.tokenType() != QXmlStreamReader::StartDocument)
        return !reader.hasError();
    const QString encoding = reader.documentEncoding().toString();
    return encoding.isEmpty() || encoding.compare(u"utf-8", Qt::CaseInsensitive) == 0 ||
           encoding.compare(u"utf8", Qt::CaseInsensitive) == 0;
}

// The element written out alone, without a declaration or added white space.
QByteArray serialise(const QDomElement &root)
{
    QString text;
    QTextStream stream(&text);
    root.save(stream, -1);
    return text.toUtf8();
}

void setText(QDomElement element, const QString &text)
{
    while (!element.firstChild().isNull())
        element.removeChild(element.firstChild());
    if (!text.isEmpty())
        element.appendChild(element.ownerDocument().createTextNode(text));
}

// properties/extended of a description, the last of each name; null when either is missing.
QDomElement extendedElement(const QDomElement &root)
{
    const QDomElement properties = root.lastChildElement(QStringLiteral("properties"));
    if (properties.isNull())
        return {};
    return properties.lastChildElement(QStringLiteral("extended"));
}

// The current time in seconds since 1970 with six decimals: the name an older file of the
// same name is kept under.
QString timeStampName()
{
    using namespace std::chrono;
    const auto micros = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    return QString::asprintf("%f", double(micros) / 1e6);
}

// A field that cannot be typed in looks so: the palette's read-only look (its window colour
// behind the text, as a label has) and no stop for Tab. A click still gives it the focus, so that
// its text can be selected and copied, and screen readers read it as a read-only field.
void setTypable(QLineEdit *field, bool typable)
{
    if (!field)
        return;
    field->setReadOnly(!typable);
    field->setFocusPolicy(typable ? Qt::StrongFocus : Qt::ClickFocus);
    if (typable) {
        field->setPalette(QPalette()); // the window's palette again
        return;
    }
    QPalette look = field->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        look.setColor(group, QPalette::Base, look.color(group, QPalette::Window));
    field->setPalette(look);
}

} // namespace

PrivateView::PrivateView(QWidget *parent)
    : QWidget(parent)
{}

PrivateView::~PrivateView() = default;

void PrivateView::findControls()
{
    m_mxtChoose = findChild<QButtonGroup *>(QStringLiteral("mxtChoose"));
    m_btnBrowse = findChild<QAbstractButton *>(QStringLiteral("btnBrowse"));
    m_btnSave = findChild<QAbstractButton *>(QStringLiteral("btnSave"));
    m_txtLink = findChild<QLineEdit *>(QStringLiteral("txtLink"));
    m_txtFile = findChild<QLineEdit *>(QStringLiteral("txtFile"));
    m_lblThumbnail = findChild<QLabel *>(QStringLiteral("lblThumbnail"));
    m_lblImageFacts = findChild<QLabel *>(QStringLiteral("lblImageFacts"));
    if (!m_mxtChoose)
        return;
    // The window description gives each choice its tag as the dynamic property "tag".
    const QList<QAbstractButton *> buttons = m_mxtChoose->buttons();
    for (QAbstractButton *button : buttons) {
        const QVariant tag = button->property("tag");
        if (tag.isValid())
            m_mxtChoose->setId(button, tag.toInt());
    }
}

void PrivateView::loadDispInfo()
{
    m_files.clear();
    findControls();
    connect(this, &PrivateView::imageChoiceChanged, this, &PrivateView::showImageFacts,
            Qt::UniqueConnection);

    if (m_mxtChoose) {
        const QList<QAbstractButton *> buttons = m_mxtChoose->buttons();
        for (QAbstractButton *button : buttons)
            button->setMinimumSize(114, 47);
        m_mxtChoose->setExclusive(true);
        selectTag(FileTag);
        connect(m_mxtChoose, &QButtonGroup::idClicked, this, &PrivateView::onChoose,
                Qt::UniqueConnection);
        chooseLocate(selectedTag());
    }

    m_settingsInfo = std::make_unique<PluginSettingsInfo>();
    m_settingsInfo->setWorkSpace(m_workSpace);
    m_settingsInfo->setIdentifier(kIdentifier);
    m_settingsInfo->setBundlePath(m_bundlePath);
    m_settingsInfo->loadWorkspace();
    const QString description = settingFileInWorkspace();
    const FileStamp before = FileStamp::of(description);
    const QDomElement root = m_settingsInfo->getXMLFromWorkspace();
    if (!root.isNull()) {
        keepLoadedDescription(root, description, before, m_settingsInfo->xmlBytes());
        loadPrivateSetting(root);
    }

    for (QAbstractButton *button : {m_btnBrowse.data(), m_btnSave.data()}) {
        if (auto *cell = qobject_cast<SimpleCell *>(button))
            cell->setShowsBorderOnlyWhileMouseInside(true);
    }
    if (m_btnBrowse)
        connect(m_btnBrowse, &QAbstractButton::clicked, this, &PrivateView::onBrowseClicked,
                Qt::UniqueConnection);
    if (m_btnSave)
        connect(m_btnSave, &QAbstractButton::clicked, this, &PrivateView::onSaveClicked,
                Qt::UniqueConnection);
    if (m_txtLink)
        connect(m_txtLink, &QLineEdit::textEdited, this, &PrivateView::onLinkEdited,
                Qt::UniqueConnection);
    // The file's name is shown, never typed: Browse…, a drop or a paste choose the file.
    setTypable(m_txtFile, false);
    if (m_lblImageFacts) {
        // The facts take the width of the widest size they can say, whatever is chosen: the
        // column keeps its width from one image to the next. Longer messages wrap.
        ImageFacts::Facts widest;
        widest.state = ImageFacts::State::Image;
        widest.size = QSize(88888, 88888);
        m_lblImageFacts->setMinimumWidth(
            m_lblImageFacts->fontMetrics().horizontalAdvance(ImageFacts::text(widest)));
    }
    emit imageChoiceChanged();
}

int PrivateView::selectedTag() const
{
    return m_mxtChoose ? m_mxtChoose->checkedId() : -1;
}

void PrivateView::selectTag(int tag)
{
    if (!m_mxtChoose)
        return;
    if (QAbstractButton *button = m_mxtChoose->button(tag))
        button->setChecked(true);
}

void PrivateView::chooseLocate(int tag)
{
    if (m_btnBrowse)
        m_btnBrowse->setEnabled(tag != LinkTag);
    // The mark of a link that will not work goes on a typable field and comes off before the
    // field takes the read-only look: both are palettes.
    if (tag == LinkTag) {
        setTypable(m_txtLink, true);
        showLinkProblem();
    } else {
        showLinkProblem();
        setTypable(m_txtLink, false);
    }
}

void PrivateView::onChoose(int tag)
{
    Q_UNUSED(tag)
    chooseLocate(selectedTag());
    // What the book shows follows the choice at once: the link (empty or not) or the file.
    onSave(nullptr);
    emit imageChoiceChanged();
}

QString PrivateView::chosenImageFile() const
{
    if (selectedTag() != FileTag || !m_txtFile || m_txtFile->text().isEmpty())
        return QString();
    return QDir(m_workSpace).filePath(m_txtFile->text());
}

QString PrivateView::chosenLink() const
{
    return selectedTag() == LinkTag && m_txtLink ? m_txtLink->text() : QString();
}

void PrivateView::showFile(const QString &name)
{
    if (!m_txtFile)
        return;
    m_txtFile->setText(name);
    // A long name is cut by the field; the whole of it is a hover away.
    m_txtFile->setToolTip(name);
    m_txtFile->setCursorPosition(0);
}

void PrivateView::showImageFacts()
{
    // A link is never fetched, so it has no facts to show.
    const ImageFacts::Facts facts = ImageFacts::read(chosenImageFile(), devicePixelRatioF());
    if (m_lblImageFacts) {
        m_lblImageFacts->setText(ImageFacts::text(facts));
        m_lblImageFacts->setToolTip(m_lblImageFacts->text());
    }
    if (m_lblThumbnail) {
        m_lblThumbnail->setPixmap(QPixmap::fromImage(facts.thumbnail));
        m_lblThumbnail->setVisible(!facts.thumbnail.isNull());
    }
}

void PrivateView::loadPrivateSetting(QDomElement root)
{
    const QDomElement extended = extendedElement(root);
    if (extended.isNull())
        return;
    for (QDomElement src = extended.firstChildElement(QStringLiteral("src")); !src.isNull();
         src = src.nextSiblingElement(QStringLiteral("src"))) {
        const QString value = src.text();
        if (QDir::isAbsolutePath(value) && QFileInfo::exists(value)) {
            // A file outside the workspace: bring a copy in and refer to it by name.
            selectTag(FileTag);
            saveFile2Workspace(value);
            const QString name = QFileInfo(value).fileName();
            showFile(name);
            m_files = QStringList{name};
        } else if (QFileInfo::exists(QDir(m_workSpace).filePath(value))) {
            selectTag(FileTag);
            showFile(value);
            m_files = value.isEmpty() ? QStringList() : QStringList{value};
        } else {
            selectTag(LinkTag);
            if (m_txtLink)
                m_txtLink->setText(value);
        }
    }
    chooseLocate(selectedTag());
}

void PrivateView::savePrivateSetting(QDomElement root)
{
    QDomElement extended = extendedElement(root);
    if (extended.isNull())
        return;
    QDomElement src = extended.lastChildElement(QStringLiteral("src"));
    if (src.isNull()) {
        QDomDocument document = root.ownerDocument();
        src =
            generateXmlWithType(document, QStringLiteral("src"), QString(), QStringLiteral("file"));
        extended.appendChild(src);
    }
    const QLineEdit *field = selectedTag() == LinkTag ? m_txtLink.data() : m_txtFile.data();
    setText(src, field ? field->text() : QString());
}

QString PrivateView::settingFileInWorkspace() const
{
    return QDir(m_workSpace).filePath(WorkspaceLayout::descriptionFileName(kIdentifier));
}

QString PrivateView::settingFileInApp() const
{
    return BundlePaths::resourceDirFor(m_bundlePath) + QStringLiteral("/data/") + kIdentifier +
           QStringLiteral(".xml");
}

bool PrivateView::onSave(QObject *sender)
{
    Q_UNUSED(sender)
    if (m_workSpace.isEmpty() || !QFileInfo(m_workSpace).isDir())
        return false;
    const QString target = settingFileInWorkspace();
    QDomDocument document = workspaceDescription(target);
    if (document.isNull())
        document = readDescription(settingFileInApp(), FileOps::ReadLinks::Follow);
    if (document.isNull()) {
        qCDebug(lcPrivateView) << "no readable description for" << target;
        return false;
    }
    QDomElement root = document.documentElement();
    savePrivateSetting(root);
    const QByteArray bytes = serialise(root);
    const bool written = FileOps::writeAtomically(target, bytes);
    // The tree now holds what was written; after a failed write the file holds something else.
    if (written)
        keepDescription(document, target, FileStamp::of(target), bytes);
    else
        m_kept.reset();
    if (m_ower) {
        try {
            m_ower->saveGlobalSettings();
        } catch (const std::exception &error) {
            qCDebug(lcPrivateView) << "owner failed to save:" << error.what();
        }
    }
    return written;
}

// The workspace's description at path as a tree: the kept one while the file holds its bytes,
// otherwise the file read again (and kept). Null when the file gives no description.
QDomDocument PrivateView::workspaceDescription(const QString &path)
{
    // Taken before the bytes are read: a change made while they are read moves the stamp.
    const FileStamp stamp = FileStamp::of(path);
    const bool mine = m_kept && m_kept->path == path && stamp.isRegularFile();
    if (mine && stamp == m_kept->stamp && m_kept->stamp.settled())
        return m_kept->document;
    QByteArray bytes;
    if (!stamp.isRegularFile() || !FileOps::readAll(path, &bytes)) {
        m_kept.reset();
        return {};
    }
    const ContentDigest digest = ContentDigest::of(bytes);
    if (mine && digest == m_kept->digest) {
        m_kept->stamp = stamp;
        return m_kept->document;
    }
    m_kept.reset();
    ++m_descriptionParses;
    QDomDocument document = readDescription(bytes);
    if (!document.isNull())
        m_kept = KeptDescription{document, path, stamp, digest};
    return document;
}

void PrivateView::keepDescription(const QDomDocument &document, const QString &path,
                                  const FileStamp &stamp, const QByteArray &bytes)
{
    m_kept = KeptDescription{document, path, stamp, ContentDigest::of(bytes)};
}

// The tree the display was loaded from, parsed from bytes (the file held them at or after
// stamp), kept for the next save when it is the tree a save would read from them.
void PrivateView::keepLoadedDescription(const QDomElement &root, const QString &path,
                                        const FileStamp &stamp, const QByteArray &bytes)
{
    m_kept.reset();
    if (stamp.isRegularFile() && readsAlikeAsText(bytes))
        keepDescription(root.ownerDocument(), path, stamp, bytes);
}

void PrivateView::controlTextDidChange(QObject *sender)
{
    if (sender && sender == m_txtLink && !m_txtLink->text().isEmpty())
        onSave(nullptr);
}

void PrivateView::onLinkEdited()
{
    controlTextDidChange(m_txtLink);
    showLinkProblem();
    emit imageChoiceChanged();
}

void PrivateView::showLinkProblem()
{
    if (!m_txtLink)
        return;
    // Only the link that the book will use is judged: none while the file is chosen.
    const LinkCheck::Problem problem =
        selectedTag() == LinkTag ? LinkCheck::check(m_txtLink->text()) : LinkCheck::Problem::None;
    RoomMark::setMarked(m_txtLink, problem != LinkCheck::Problem::None,
                        LinkCheck::reasonText(problem));
}

void PrivateView::onBrowseClicked()
{
    onBrowse(sender());
}

void PrivateView::onSaveClicked()
{
    onSave(sender());
}

QString PrivateView::importFilePath()
{
    static const QString path = QDir::homePath() + QStringLiteral("/Documents");
    return path;
}

void PrivateView::onBrowse(QObject *sender)
{
    Q_UNUSED(sender)
    const QString prompt = loadAppString(
        QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "PrivateV-Select a image file")),
        QStringLiteral("Select a image file"));
    auto *panel = new VelPanel;
    panel->setDirectory(importFilePath());
    panel->setIsOpenPanel(true);
    panel->setTitle(prompt);
    panel->setPrompt(prompt);
    panel->setOwer(this);
    panel->setAllowsMultipleSelection(false);
    panel->setAllowsOtherFileTypes(false);
    panel->setCanChooseFiles(false);
    panel->setCanChooseDirectories(false);
    panel->setTypes(WorkspaceLayout::imageSuffixes());
    panel->setEndPanelSelector("endBrowseImage");
    panel->runModel();
}

void PrivateView::endBrowseImage(VelPanel *panel)
{
    // Runs on the panel's end thread: read the choice only, do the work on the main thread.
    const QString path = panel ? panel->url().toLocalFile() : QString();
    QMetaObject::invokeMethod(
        this, [this, path] { refreshLocateFile(path); }, Qt::QueuedConnection);
}

void PrivateView::refreshLocateFile(const QString &path)
{
    // A file that is there but is no image of the four types is refused as a drop refuses it,
    // with the same reason, and nothing is copied. One that cannot be copied at all (gone
    // meanwhile, a folder) still gives "Copy Failed!".
    if (FileOps::isRegularFile(path, FileOps::ReadLinks::Follow)) {
        const ImageDrop::Verdict verdict = ImageDrop::classifyFile(path);
        if (verdict.kind != ImageDrop::Kind::ImageFile) {
            LogAlert::AlertOKWithMessage(ImageDrop::reasonText(verdict.reason), QString());
            emit locateFileRefreshed(path, false);
            return;
        }
    }
    const bool copied = saveFile2Workspace(path);
    const QString name = QFileInfo(path).fileName();
    m_files = QStringList{name};
    if (copied) {
        showFile(name);
        // A chosen image is saved at once, like every other edit: the description, the
        // owner's settings and the preview follow.
        onSave(nullptr);
    } else {
        const QString failed =
            QStringLiteral(QT_TRANSLATE_NOOP("PluginLocale", "PrivateV-Copy Failed!"));
        LogAlert::AlertOKWithMessage(loadAppString(failed, QStringLiteral("Copy Failed!")),
                                     QString());
    }
    emit locateFileRefreshed(path, copied);
    emit imageChoiceChanged();
}

void PrivateView::takeImageFile(const QString &path)
{
    selectTag(FileTag);
    chooseLocate(selectedTag());
    refreshLocateFile(path);
}

void PrivateView::takeLink(const QString &link)
{
    selectTag(LinkTag);
    chooseLocate(selectedTag());
    if (!m_txtLink)
        return;
    m_txtLink->setText(link);
    onLinkEdited();
}

bool PrivateView::saveFile2Workspace(const QString &path)
{
    if (path.contains(m_workSpace))
        return true;
    const QString name = QFileInfo(path).fileName();
    // A path without a file name would make the workspace (or its parent) the destination.
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return false;
    // The copy reads the chosen file: a FIFO would stall it and a device might never end.
    if (!FileOps::isRegularFile(path, FileOps::ReadLinks::Follow))
        return false;
    const QDir workspace(m_workSpace);
    const QString dest = workspace.filePath(name);
    const QString fallback = workspace.filePath(timeStampName());
    const bool occupied = FileOps::exists(dest);
    const bool keptOld = occupied && FileOps::renameItem(dest, fallback);
    if (FileOps::copyItem(path, dest))
        return true;
    qCDebug(lcPrivateView) << "could not copy" << path << "to" << dest;
    // The copy is atomic, so nothing of it stands at dest; the old file goes back to its name.
    if (keptOld)
        FileOps::renameItem(fallback, dest);
    return false;
}

void PrivateView::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        FramePainter::strokeRoundedRect(painter, QRectF(rect()), 4.0, 2.0,
                                        FramePainter::frameGrey());
    }
    QWidget::paintEvent(event);
}
