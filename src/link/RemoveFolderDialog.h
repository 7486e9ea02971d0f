#pragma once

// The small modal dialog "Verwijder Map": the user picks one of the shared
// folders and removes it with its slot.

#include "ui/Controls.h"

#include <QDialog>

namespace vk {

class ControlRegistry;
class Hoofdvenster;

class Remove_Folder : public QDialog {
public:
    explicit Remove_Folder(Hoofdvenster& window);
    ~Remove_Folder() override;

    LabelControl* Label1;
    ComboBoxControl* Combo_Folders;
    LabelControl* Label2;
    ButtonControl* Cmd_Remove;
    ButtonControl* Cmd_Close;

private:
    // The dialog's controls are reachable by name while it is open.
    ControlRegistry& registry_;
    QList<Control*> controls_;
};

} // namespace vk
