#pragma once

#include <functional>

namespace platform {
class Form;
}

namespace tavolix {

// Connects a button of a form.
void Collega(platform::Form& form, const char* nome, std::function<void()> opera);
// What Enter and Escape do in a dialog: Enter presses the button that has the focus, else the one
// named. True if the key is used up.
bool bTastoDialogo(platform::Form& form, int key, const char* invio, const char* esc);

}  // namespace tavolix
