#pragma once

#include <span>
#include <vector>

namespace tavolix {

// The button of a command in the bar: cmdBar(indice). The tens of its place are a group of the
// bar, the units its place there.
struct PulsanteBarra {
  int indice = -1;  // none
  int posto = 0;
  const char* icona = "";
  const char* suggerimento = "";
};

enum class Quando {
  kSempre,
  kRaccolta,  // once a collection has been chosen; nothing happens before
};

// A command of the main window: a row in the table of the area that owns it. A row in whose menu
// others stand is a menu itself.
struct Comando {
  const char* menu;        // name of the one it stands in; "" the menu bar, null none: keys only
  int posto;               // its order there
  const char* nome;        // of the menu entry
  const char* testo;       // "-" is a line
  const char* tasti = "";  // several are parted by "; ", the first is shown
  int guida = 0;           // page of the guide, 0 for none
  void (*esegui)() = nullptr;  // without it the command is there, disabled
  Quando quando = Quando::kSempre;
  PulsanteBarra pulsante = {};
  bool spunta = false;  // the entry can be checked
};

// Adds an area's table, which lives as long as the program; once, however often it is called.
void RegistraComandi(std::span<const Comando> tabella);

// All commands in the order of their places, whichever menu they stand in.
std::vector<const Comando*> Comandi();

// Runs a command if it is possible now.
void EseguiComando(const Comando& comando);

}  // namespace tavolix
