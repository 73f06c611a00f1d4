// Writes a page with a template from a folder that is not beside the program.
#include <scrivalen/scrivalen.h>

int writeGreeting(const wchar_t* file);

int main() {
  scrivalen::SetDataFolder(DATA_FOLDER);
  return writeGreeting(L"greeting.html");
}
