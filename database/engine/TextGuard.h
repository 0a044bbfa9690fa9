#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

struct sqlite3;

namespace orxdb {

/// Who wrote a statement's text: the layer itself, or (wholly or in part) a host or a stored
/// query. The latter may only read and call listed functions.
enum class Origin { Own, Host };

/// What a text of a host or of a stored query makes use of.
struct TextUses {
  bool overRows = false;         ///< an aggregate or a window function
  std::set<std::string> views;   ///< the stored queries beneath, names folded
  std::set<std::string> tables;  ///< and all tables that it reads
};

/// Keeps texts of hosts and of files harmless: what they may do, for how long, and with how much
/// memory. The limits hold for the layer's own statements too: a file's triggers run inside them.
class TextGuard {
 public:
  /// Bytes of a text, of binary data, or of a record that is stored. What another program stored
  /// beyond that cannot be read: a walk fails where it comes to such a record.
  static constexpr int kLongestValue = 16 << 20;
  /// Bytes that a statement may take while it runs, temporary tables and sorting included, and
  /// that may be kept of what it gives. SQLite counts for the whole process, so where another of
  /// its users grows by as much meanwhile, the statement is given up as well.
  static constexpr std::int64_t kMostMemory = 256 << 20;

  TextGuard() = default;
  TextGuard(const TextGuard&) = delete;
  TextGuard& operator=(const TextGuard&) = delete;

  /// Lays the rules on a connection, which must not outlive the guard.
  void Protect(sqlite3* database);

  /// While it lives, the connection works on a text of that origin; `uses` learns what for.
  class Turn {
   public:
    Turn(TextGuard& guard, Origin origin, TextUses* uses = nullptr) noexcept : m_guard(guard) {
      guard.m_origin = origin;
      guard.m_uses = uses;
    }
    ~Turn() {
      m_guard.m_origin = Origin::Own;
      m_guard.m_uses = nullptr;
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

   private:
    TextGuard& m_guard;
  };

  /// A statement is prepared or begins to run: time and memory count from here.
  void Start() noexcept;
  /// Raises why the statement that ran last was given up.
  [[noreturn]] void RaiseStopped() const;
  /// Raises when what is kept of a statement's rows has come to more than `kMostMemory` bytes.
  static void RequireRoom(std::size_t bytes);

 private:
  int Authorize(int action, const char* first, const char* second, const char* view);
  bool MayGoOn() noexcept;
  static int OnAuthorize(void* self, int action, const char* first, const char* second,
                         const char* database, const char* view) noexcept;
  static int OnProgress(void* self) noexcept;

  Origin m_origin = Origin::Own;
  TextUses* m_uses = nullptr;
  unsigned m_looks = 0;            ///< since the start
  std::int64_t m_startTime = 0;    ///< steady clock, nanoseconds, at the first look
  std::int64_t m_startMemory = 0;  ///< bytes
  bool m_tooMuchMemory = false;
};

}  // namespace orxdb
