// import: tools of other programs' files.
#include <CLI/CLI.hpp>
#include <memory>

#include "host/transfer/DraftImport.h"
#include "host/transfer/Import.h"
#include "host/transfer/Readers.h"
#include "host/verbs/CommonArguments.h"
#include "host/verbs/ProgressBar.h"
#include "host/verbs/Show.h"

namespace orxdb {
namespace {

/// Lines told one by one; more of them help nobody.
constexpr long long kToldLines = 1000;

struct ImportOptions : DraftImportOptions {
  std::vector<std::string> sources;
  std::vector<std::string> maps;
  ReadOptions read;
  bool strict = false;
};

std::vector<ColumnMapping> Mappings(const std::vector<std::string>& words) {
  std::vector<ColumnMapping> mappings;
  for (const std::string& word : words) {
    const std::size_t sign = word.rfind('=');
    mappings.push_back({word.substr(0, sign), word.substr(sign + 1)});
  }
  return mappings;
}

std::string CheckMapping(const std::string& word) {
  const std::size_t sign = word.rfind('=');
  const bool valid = sign != 0 && sign != word.npos && sign + 1 < word.size();
  return valid ? "" : Cited(word) + " is not COLUMN=PROPERTY";
}

/// A property that no kind of tool has is a slip of the pen.
void CheckProperties(ToolDatabase& database, const ImportOptions& options) {
  for (const ColumnMapping& mapping : options.mappings) {
    const auto& kinds = database.Types();
    const bool known = std::ranges::any_of(kinds, [&](const ToolKind& kind) {
      const std::vector<Property> properties = database.Properties(kind.table);
      return FindNamed(properties, mapping.property, &Property::name) != properties.end();
    });
    if (!known) throw HostError("No kind of tool has a property " + Cited(mapping.property) + '.');
  }
}

Answer CountsOf(const PlanCounts& counts) {
  const auto number = [&counts](Outcome outcome) { return Cell::Number(counts[outcome]); };
  return Answer({"Records", "Added", "Present", "Differs", "Updated", "Refused"},
                {Cell::Number(counts.Records()), number(Outcome::Added), number(Outcome::Present),
                 number(Outcome::Differs), number(Outcome::Updated), number(Outcome::Refused)});
}

Answer ImportDrafts(const Settings& settings, ImportOptions& options) {
  ToolDatabase database(settings.database);
  if (!options.table.empty()) options.table = database.TableNamed(options.table);
  options.mappings = Mappings(options.maps);
  CheckProperties(database, options);
  ProgressBar bar;
  long long lines = 0;
  DraftImport run(database, options, [&](const PlanLine& line) {
    const bool trivial = line.outcome == Outcome::Added || line.outcome == Outcome::Present;
    if (trivial || ++lines > kToldLines) return;
    bar.Clear();
    Tell(line.Text());
  });
  std::string complaint;
  std::vector<std::string> remarks;
  for (const std::string& name : options.sources) {
    try {
      const std::unique_ptr<DraftReader> source = OpenDrafts(name, options.read);
      run.Read(*source, std::ref(bar));
      std::ranges::copy(source->Remarks(), std::back_inserter(remarks));
    } catch (const HostError& e) {
      complaint += (complaint.empty() ? "" : "\n") + std::string(e.what());
    }
  }
  const PlanCounts& counts = run.Counts();
  Answer answer = CountsOf(counts);
  answer.remarks = std::move(remarks);
  if (lines > kToldLines) {
    answer.remarks.push_back("And " + std::to_string(lines - kToldLines) + " records more.");
  }
  std::ranges::copy(run.Remarks(), std::back_inserter(answer.remarks));
  if (options.dryRun) answer.remarks.emplace_back("Only planned; nothing is changed.");
  answer.complaint = std::move(complaint);
  if (!counts.IsComplete()) {
    const long long left = counts[Outcome::Differs] + counts[Outcome::Refused];
    answer.Complain("Not all is in the database as the source has it: " + std::to_string(left) +
                    " of " + std::to_string(counts.Records()) + " records are not.");
  }
  return answer;
}

Answer Import(const Settings& settings, ImportOptions& options) {
  if (!options.strict) return ImportDrafts(settings, options);
  if (options.sources.size() != 1) throw CLI::ValidationError("SOURCE", "one with --strict");
  ProgressBar progress;
  return (options.dryRun ? TryImport : ImportFile)(settings.database, options.sources.front(),
                                                   std::ref(progress));
}

void AddReading(CLI::App& verb, ImportOptions& options) {
  verb.add_option("SOURCE", options.sources, "A file, a folder of files, or - for standard input")
      ->required()
      ->type_name("");
  const std::map<std::string, ToolFormat> formats = {
      {"auto", ToolFormat::Auto},       {"exchange", ToolFormat::Exchange},
      {"csv", ToolFormat::Csv},         {"tsv", ToolFormat::Tsv},
      {"json", ToolFormat::Json},       {"jsonl", ToolFormat::Jsonl},
      {"freecad", ToolFormat::FreeCad}, {"linuxcnc", ToolFormat::LinuxCnc}};
  verb.add_option("--format", options.read.format,
                  "exchange, csv, tsv, json, jsonl, freecad or linuxcnc; else told by the content")
      ->transform(CLI::CheckedTransformer(formats, CLI::ignore_case).description(""))
      ->type_name("FORMAT");
  const std::map<std::string, Encoding> encodings = {{"auto", Encoding::Auto},
                                                     {"utf-8", Encoding::Utf8},
                                                     {"utf-16", Encoding::Utf16},
                                                     {"windows-1252", Encoding::Windows1252}};
  verb.add_option("--encoding", options.read.encoding,
                  "utf-8, utf-16 or windows-1252; else told by the content")
      ->transform(CLI::CheckedTransformer(encodings, CLI::ignore_case).description(""))
      ->type_name("ENCODING");
  verb.add_option("--table", options.table, "Kind of tool, where the source tells none")
      ->type_name("TABLE");
  verb.add_option("--map", options.maps, "A column and the property that it is")
      ->check(CLI::Validator(CheckMapping, ""))
      ->allow_extra_args(false)
      ->type_name("COLUMN=PROPERTY");
  verb.add_option("--unit", options.unit, "Of lengths where the source tells none: mm or in")
      ->check(CLI::IsMember({"mm", "in"}).description(""))
      ->type_name("UNIT");
}

}  // namespace

void AddImportCommand(CLI::App& app, const Settings& settings) {
  CLI::App* verb = app.add_subcommand("import", "Add tools of files of any usual format");
  const auto options = std::make_shared<ImportOptions>();
  AddReading(*verb, *options);
  verb->add_option("--match", options->match,
                   "Properties by which a tool is the same one; Name if none are told")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->type_name("PROPERTY,...");
  verb->add_flag("--update", options->update, "Change tools that differ to what the source has");
  verb->add_flag("--add-values", options->addValues, "Add texts that a list lacks to the list");
  verb->add_flag("--dry-run", options->dryRun, "Tell what would be done, and change nothing");
  verb->add_flag("--strict", options->strict,
                 "An exchange file as the component itself imports it; takes no other option than "
                 "--dry-run");
  verb->footer(
      "Tools that are there with all values of the source are not added again. What is not\n"
      "understood is refused with its reason; the code is 1 unless every record is then in\n"
      "the database as the source has it.\n\n"
      "Example:\n  orxdb list TAP --json | orxdb import - --table TAP --unit mm --dry-run");
  verb->callback([&settings, options] {
    options->read.unit = options->unit;
    Show(settings.format, Shape::Record, Import(settings, *options));
  });
}

}  // namespace orxdb
