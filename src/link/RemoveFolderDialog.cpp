#include "link/RemoveFolderDialog.h"

#include "link/SharedFolders.h"
#include "ui/ControlRegistry.h"
#include "ui/Hoofdvenster.h"

namespace vk {

namespace {

constexpr int FormBackColor = 8438015;

} // namespace

Remove_Folder::Remove_Folder(Hoofdvenster& window) : QDialog(&window), registry_(window.Controls())
{
    setObjectName(QStringLiteral("Remove_Folder"));
    setWindowTitle(QStringLiteral("Verwijder Map"));
    setFixedSize(TwipsToPixels(5220), TwipsToPixels(2460));
    setAutoFillBackground(true);
    QPalette palette = this->palette();
    palette.setColor(QPalette::Window, ColorFromNumber(FormBackColor));
    setPalette(palette);

    Label1 = new LabelControl(this, QStringLiteral("Label1"),
                              QStringLiteral("Selecteer de Map die wenst te verwijderen en klik dan op de knop "
                                             "\"Verwijder\""));
    Label1->Move(120, 120, 4935, 435);
    Label1->setWordWrap(true);

    Combo_Folders = new ComboBoxControl(this, QStringLiteral("Combo_Folders"));
    Combo_Folders->Move(120, 660, 4935, 315);

    Label2 = new LabelControl(this, QStringLiteral("Label2"), QString());
    Label2->Move(120, 1080, 4935, 435);
    Label2->setWordWrap(true);

    Cmd_Remove = new ButtonControl(this, QStringLiteral("Cmd_Remove"), QStringLiteral("Verwijder"));
    Cmd_Remove->Move(1200, 1740, 1335, 375);
    Cmd_Close = new ButtonControl(this, QStringLiteral("Cmd_Close"), QStringLiteral("Sluiten"));
    Cmd_Close->Move(2760, 1740, 1335, 375);

    Combo_Folders->Click = [this] { Combo_Folders_Click(*this); };
    Cmd_Remove->Click = [this, &window] { Cmd_Remove_Click(window, *this); };
    Cmd_Close->Click = [this] { reject(); };

    controls_ = {Label1, Combo_Folders, Label2, Cmd_Remove, Cmd_Close};
    for (Control* control : controls_)
        registry_.Add(control);
}

Remove_Folder::~Remove_Folder()
{
    for (Control* control : controls_)
        registry_.Remove(control);
}

} // namespace vk
