#pragma once

// The three sounds of the game. The sound control offers four operations: tie
// it to the window, start the sound system (1 means ready), load a file and
// get a handle (negative when the file can't be loaded), play a handle without
// waiting. Without an audio device the start fails and the game stays silent.

#include <QObject>
#include <QString>

#include <array>
#include <memory>
#include <vector>

class QSoundEffect;
class QWidget;

namespace vk {

enum SoundIndex { SoundIntro = 0, SoundDice = 1, SoundMessage = 2 };

class SoundControl : public QObject {
public:
    explicit SoundControl(QObject* parent);
    ~SoundControl() override;

    void SetWindow(QWidget* window);          // ties the control to the window
    int Start();                              // 1 when the sound system is ready
    int Load(const QString& path);            // a handle, negative on failure
    void Play(int handle);                    // does not wait for the end

private:
    QWidget* window_ = nullptr;
    bool started_ = false;
    std::vector<std::unique_ptr<QSoundEffect>> effects_;
};

struct SoundState {
    std::array<int, 3> SoundHandles{0, 0, 0};
};

// Starts the sound system and loads the three files from the program folder.
void Init_Sound(SoundControl& sound, SoundState& state, const QString& programFolder);

// Plays one of the three sounds; an index outside 0 to 2 is a fault.
void Speel(SoundControl& sound, const SoundState& state, int index);

} // namespace vk
