#pragma once

// All named controls of the main window, by name, in the order of creation.
// Members of control arrays are named like "Voertuig_1(3)".

#include "ui/Controls.h"

#include <QHash>
#include <QList>
#include <QString>

namespace vk {

class ControlRegistry {
public:
    // Registers a control under its objectName.
    void Add(Control* control);
    // Forgets a control, such as one of a dialog that closes.
    void Remove(Control* control);
    // The control of that name, or nullptr.
    Control* Find(const QString& name) const;
    const QList<Control*>& All() const { return all_; }

private:
    QList<Control*> all_;
    QHash<QString, Control*> byName_;
};

// The name of a member of a control array: "Voertuig_1(3)".
QString ArrayMemberName(const QString& array, int index);

} // namespace vk
