#include "ui/ControlRegistry.h"

namespace vk {

void ControlRegistry::Add(Control* control)
{
    all_.append(control);
    byName_.insert(control->Name(), control);
}

void ControlRegistry::Remove(Control* control)
{
    all_.removeAll(control);
    if (byName_.value(control->Name()) == control)
        byName_.remove(control->Name());
}

Control* ControlRegistry::Find(const QString& name) const
{
    return byName_.value(name, nullptr);
}

QString ArrayMemberName(const QString& array, int index)
{
    return array + QLatin1Char('(') + QString::number(index) + QLatin1Char(')');
}

} // namespace vk
