#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What the tests ask of the system, and each system has its own way to do.
namespace support {

enum class View : std::uint8_t { Bits32, Bits64 };

// An edition of the game in the registry, and where it is installed; text in the code page.
struct Installation {
  std::string edition;
  std::string folder;
  View view = View::Bits32;
  std::uint32_t type = 0;  // of the registry's value, whose bytes `folder` is then; 0 for a text
};

// Makes these the installations that the registry knows.
void SetRegistry(const std::vector<Installation>& installations);

// Asks this program to quit, as the desktop does at the end of its session.
void AskToQuit();

// The system's part of the program's own folder: where it is, which is asked for once, and the drives in it. Ends the
// program where it may have none.
void MakeRoot();
void MakeDrives();

}  // namespace support
