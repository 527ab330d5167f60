// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "imgplugin.h"

#include "bundlepaths.h"
#include "pluginsettingsdelegate.h"

#include <QCoreApplication>
#include <QDialog>
#include <QLoggingCategory>

#include <memory>

namespace {

Q_LOGGING_CATEGORY(lcPlugin, "img.plugin", QtWarningMsg)

// The settings window's web view shares OpenGL contexts with the host's widgets; the web engine
// can only do so when the host switched sharing on before its application object existed, and
// without it the first web view takes the process down.
bool hostSharesOpenGLContexts()
{
    if (QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts))
        return true;
    qCWarning(lcPlugin,
              "no settings window: the host must call "
              "QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts) before it creates its "
              "QApplication");
    return false;
}

static_assert(int(ImgSettingsController::WorkspaceUnavailable) ==
              int(PluginSettingsDelegate::WorkspaceUnavailable));
static_assert(int(ImgSettingsController::BackupUnavailable) ==
              int(PluginSettingsDelegate::BackupUnavailable));
static_assert(int(ImgSettingsController::RestoreFailed) ==
              int(PluginSettingsDelegate::RestoreFailed));

// Presents a PluginSettingsDelegate through the host's pure interface; the ui layer stays free of
// the plugin's public header.
class SettingsController final : public ImgSettingsController
{
public:
    explicit SettingsController(PluginSettingsDelegate *delegate)
        : m_delegate(delegate)
    {
        QObject::connect(m_delegate.get(), &PluginSettingsDelegate::windowClosed, m_delegate.get(),
                         [this](int closeMode) {
                             if (m_closedHandler)
                                 m_closedHandler(closeMode);
                         });
    }
    // A host that lets go of an open window discards it, as Cancel would, so that the workspace
    // is never left half-edited with its backup behind.
    ~SettingsController() override { m_delegate->endWindow(PluginSettingsDelegate::Discard); }

    void setModalMode(bool modal) override { m_delegate->setModalMode(modal); }
    void setWorkSpace(const QString &path) override { m_delegate->setWorkSpace(path); }
    QString workSpace() const override { return m_delegate->workSpace(); }
    QString bundlePath() const override { return m_delegate->bundlePath(); }
    QDialog *window() override { return m_delegate->window(); }
    int closeMode() const override { return m_delegate->closeMode(); }
    bool isCloseBundle() const override { return m_delegate->isCloseBundle(); }
    QObject *object() override { return m_delegate.get(); }
    void setRecoveryAnswer(int answer) override
    {
        if (answer >= PluginSettingsDelegate::AskAuthor &&
            answer <= PluginSettingsDelegate::KeepAsItIs)
            m_delegate->setRecoveryAnswer(PluginSettingsDelegate::RecoveryAnswer(answer));
    }

    void endWindow(int closeMode) override
    {
        m_delegate->endWindow(closeMode == PluginSettingsDelegate::Apply
                                  ? PluginSettingsDelegate::Apply
                                  : PluginSettingsDelegate::Discard);
    }
    void setClosedHandler(std::function<void(int)> handler) override
    {
        m_closedHandler = std::move(handler);
    }
    int problems() const override { return int(m_delegate->problems()); }

private:
    std::unique_ptr<PluginSettingsDelegate> m_delegate;
    std::function<void(int)> m_closedHandler;
};

} // namespace

ImgSettingsController *ImgPlugin::createSettingsDelegate(const QString &languageCode,
                                                         const QString &bundlePath)
{
    if (!hostSharesOpenGLContexts())
        return nullptr;
    // An empty path means the host's own bundle, by design; anything else is checked, so that a
    // refusal (or a window without its preview) always comes with its reason.
    const QString problem = bundlePath.isEmpty() ? QString() : BundlePaths::problemWith(bundlePath);
    std::unique_ptr<PluginSettingsDelegate> delegate =
        PluginSettingsDelegate::create(languageCode, bundlePath);
    if (!delegate) {
        const QString reason = problem.isEmpty()
                                   ? BundlePaths::problemWith(BundlePaths::mainBundlePath())
                                   : problem;
        qCWarning(lcPlugin).noquote() << "no settings window:"
                                      << (reason.isEmpty() ? QStringLiteral("its description cannot be read")
                                                           : reason);
        return nullptr;
    }
    if (!problem.isEmpty())
        qCWarning(lcPlugin).noquote() << "settings window with a damaged bundle:" << problem;
    return new SettingsController(delegate.release());
}
