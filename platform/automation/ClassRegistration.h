// Making classes known, and forgetting them; ClassObject.h tells how they are found.
//
// A library that registers itself describes its class by a registration script: the text of a
// class file in which %MODULE% stands for the library's path. Its ProgId names the class file,
// "<ProgId>.class".
//
// Classes are registered in one folder. While AUTOMATION_CLASS_PATH is set that is its first
// folder. Otherwise it is `automation/classes.d` in a data folder: for the super-user
// `/usr/local/share`, or the first of XDG_DATA_DIRS when that list leaves it out; for everybody
// else XDG_DATA_HOME (`~/.local/share`).
#pragma once

#include <string>
#include <string_view>

#include "platform/automation/Types.h"

namespace orxdb {

/// The folder in which this process registers classes; empty when the environment names none.
AUTOMATION_API std::string RegistrationFolder();

/// Registers a class for the library at an absolute path, making the folder if need be. What was
/// registered there for the class or under its ProgId goes; at every moment other processes find
/// the earlier registration or the new one, whole. E_ACCESSDENIED when the place cannot be
/// written, SELFREG_E_CLASS when there is no such place, when storing fails otherwise or when the
/// script does not make a class file with a ProgId.
AUTOMATION_API HRESULT RegisterClass(std::string_view script, const std::string& library) noexcept;

/// Removes what RegisterClass has stored, whichever library it was for; nothing to remove is
/// success. The folder and all other classes stay. Statuses as for RegisterClass.
AUTOMATION_API HRESULT UnregisterClass(std::string_view script) noexcept;

}  // namespace orxdb
