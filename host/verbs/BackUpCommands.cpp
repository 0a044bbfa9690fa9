// backup, restore: copies of a library for bad days.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/library/BackUp.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/Show.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

struct BackUpOptions {
  std::string file;
  std::size_t keep = 0;
  bool force = false;
};

}  // namespace

void AddBackUpCommands(CLI::App& app, const Settings& settings) {
  CLI::App* out = app.add_subcommand("backup", "Copy the database while others work with it");
  const auto made = std::make_shared<BackUpOptions>();
  RequireName(
      out->add_option("FILE", made->file, "The new file; with --keep a folder that is there"))
      ->required()
      ->type_name("");
  CLI::Option* force = out->add_flag("--force", made->force, "Replace the file that is there");
  out->add_option("--keep", made->keep,
                  "Write a file named after database and time into a folder, and remove the oldest "
                  "ones of such names but for N")
      ->check(CLI::PositiveNumber)
      ->excludes(force)
      ->type_name("N");
  out->footer(
      "The copy is a state of one moment, is read through and found in order before it gets its\n"
      "name, and needs no other file beside it. Without --keep an older file is never replaced\n"
      "unless --force is given, with it none is removed before the new one stands.\n\n"
      "Example:\n  orxdb backup monday.mdb && mkdir old && orxdb backup --keep 10 old");
  out->callback([&settings, made] {
    const std::string file = NativePath(made->file);
    Show(settings.format, Shape::Bare,
         made->keep > 0 ? BackUpInto(settings.database, file, made->keep)
                        : BackUpTo(settings.database, file, made->force));
  });

  CLI::App* in = app.add_subcommand("restore", "Put a backup in the place of the database");
  const auto taken = std::make_shared<BackUpOptions>();
  RequireName(in->add_option("FILE", taken->file, "The backup, or any other tool database"))
      ->required()
      ->type_name("");
  in->add_flag("--force", taken->force,
               "Nobody has the database open, although the system cannot tell");
  in->footer(
      "The backup is read through first and stays as it is. The old database is kept beside the\n"
      "restored one, under a name with the time. It is not replaced while a program has it open;\n"
      "of a database without a log in a network folder, or of another person's, only you can\n"
      "know that.\n\n"
      "Example:\n  orxdb backup before.mdb && orxdb restore before.mdb");
  in->callback([&settings, taken] {
    Show(settings.format, Shape::Record,
         Restore(settings.database, NativePath(taken->file), taken->force));
  });
}

}  // namespace orxdb
