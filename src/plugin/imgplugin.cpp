#include "imgplugin.h"

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

// Presents a PluginSettingsDelegate through the host's pure interface; the ui layer stays free of
// the plugin's public header.
class SettingsController final : public ImgSettingsController
{
public:
    explicit SettingsController(PluginSettingsDelegate *delegate)
        : m_delegate(delegate)
    {}

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

private:
    std::unique_ptr<PluginSettingsDelegate> m_delegate;
};

} // namespace

ImgSettingsController *ImgPlugin::createSettingsDelegate(const QString &languageCode,
                                                         const QString &bundlePath)
{
    if (!hostSharesOpenGLContexts())
        return nullptr;
    std::unique_ptr<PluginSettingsDelegate> delegate =
        PluginSettingsDelegate::create(languageCode, bundlePath);
    if (!delegate)
        return nullptr;
    return new SettingsController(delegate.release());
}
