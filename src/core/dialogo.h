#pragma once

#include "platform/form.h"

namespace tavolix {

// What all dialogs have, once their window is loaded: until it is unloaded it stands in the
// register of open forms, and its help button, if there is one, asks for the guide.
void PreparaDialogo(platform::Form& form);

}  // namespace tavolix
