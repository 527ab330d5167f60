#include "imgplugin.h"

#include "pluginsettingsdelegate.h"

#include <QDialog>

#include <memory>

namespace {

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
    std::unique_ptr<PluginSettingsDelegate> delegate =
        PluginSettingsDelegate::create(languageCode, bundlePath);
    if (!delegate)
        return nullptr;
    return new SettingsController(delegate.release());
}
