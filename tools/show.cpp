#include "tools/show.h"

#include <ostream>

namespace dalvo::tools {

void show(const Inputs &inputs, std::ostream &out)
{
    const Configuration settings = settings_of(applying_assignments(inputs));
    ConfigurationSetter().dump(&settings, out, "");
}

} // namespace dalvo::tools
