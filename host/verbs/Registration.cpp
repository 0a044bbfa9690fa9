// orxregsvr: makes the class of a library known to hosts, or unknown again. The exit code is 0 for
// done, 1 for failed, 2 for wrong usage.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "host/library/HostError.h"
#include "platform/automation/ClassRegistration.h"
#include "platform/framework/ExecutablePath.h"
#include "platform/framework/Library.h"

namespace orxdb {
namespace {

std::string Reason(HRESULT status) {
  const std::string folder = RegistrationFolder();
  if (folder.empty()) return "the environment names no class folder";
  if (status == E_ACCESSDENIED) return "the class folder " + folder + " may not be written";
  if (status == SELFREG_E_CLASS) return "the class folder " + folder + " cannot be used";
  return "status " + Hexadecimal(status);
}

void ChangeRegistration(const std::string& name, bool remove) {
  // A path, never a name to search for.
  const std::string path = std::filesystem::absolute(NativePath(name));
  const Library library = Library::Load(path);
  if (!library) throw HostError("Not a library that can be loaded: " + library.Message());
  auto* const change =
      library.Find<HRESULT()>(remove ? "DllUnregisterServer" : "DllRegisterServer");
  if (!change) throw HostError(path + " does not register classes.");
  if (const HRESULT status = change(); FAILED(status)) {
    throw HostError(path + " could not be " + (remove ? "unregistered" : "registered") + ": " +
                    Reason(status) + '.');
  }
  std::printf("%s %s in %s.\n", remove ? "Unregistered" : "Registered", path.c_str(),
              RegistrationFolder().c_str());
}

int Run(int argc, char** argv) {
  std::string library;
  bool remove = false;
  CLI::App app("Makes the class of a library known to the hosts on this machine.", "orxregsvr");
  app.add_flag("-u,--unregister", remove, "Make it unknown again");
  app.add_option("LIBRARY", library, "Path of the library")->required();
  app.footer(
      "The class is registered in the first folder of AUTOMATION_CLASS_PATH while that is set,\n"
      "otherwise for the super-user in /usr/local/share/automation/classes.d, for others in\n"
      "~/.local/share/automation/classes.d (XDG_DATA_DIRS and XDG_DATA_HOME may name others).\n\n"
      "Example:\n  orxregsvr lib/libORXDB.so");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? 0 : 2;
  }
  ChangeRegistration(library, remove);
  return 0;
}

}  // namespace
}  // namespace orxdb

int main(int argc, char** argv) {
  try {
    return orxdb::Run(argc, argv);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "orxregsvr: %s\n", e.what());
    return 1;
  }
}
