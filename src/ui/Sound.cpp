#include "ui/Sound.h"

#include "shell/RunTimeFault.h"

#include <QAudioDevice>
#include <QFile>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>

namespace vk {

namespace {

const char* const SoundFiles[3] = {"intro.wav", "rolldice.wav", "message.wav"};

// A file that a sound effect can play: readable and a RIFF/WAVE file.
bool IsReadableWave(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = file.read(12);
    return head.size() == 12 && head.startsWith("RIFF") && head.mid(8, 4) == "WAVE";
}

} // namespace

SoundControl::SoundControl(QObject* parent) : QObject(parent)
{
    setObjectName(QStringLiteral("ESound1"));
}

SoundControl::~SoundControl() = default;

void SoundControl::SetWindow(QWidget* window)
{
    window_ = window;
}

int SoundControl::Start()
{
    started_ = !QMediaDevices::audioOutputs().isEmpty();
    return started_ ? 1 : 0;
}

int SoundControl::Load(const QString& path)
{
    if (!started_ || !IsReadableWave(path))
        return -1;
    auto effect = std::make_unique<QSoundEffect>();
    effect->setSource(QUrl::fromLocalFile(path));
    effect->setVolume(0.8f);
    effects_.push_back(std::move(effect));
    return static_cast<int>(effects_.size());
}

void SoundControl::Play(int handle)
{
    // Handle 0 (never loaded) and unknown handles play nothing.
    if (handle <= 0 || handle > static_cast<int>(effects_.size()))
        return;
    QSoundEffect* effect = effects_[static_cast<size_t>(handle - 1)].get();
    if (effect->status() == QSoundEffect::Error)
        return;
    effect->stop();
    effect->play();
}

void Init_Sound(SoundControl& sound, SoundState& state, const QString& programFolder)
{
    if (sound.Start() != 1)
        return;
    for (int i = 0; i <= 2; ++i)
        state.SoundHandles[static_cast<size_t>(i)] = sound.Load(programFolder + QLatin1String(SoundFiles[i]));
}

void Speel(SoundControl& sound, const SoundState& state, int index)
{
    CheckIndex(index, 0, 2, "SoundHandles");
    const int handle = state.SoundHandles[static_cast<size_t>(index)];
    if (handle >= 0)
        sound.Play(handle);
}

} // namespace vk
