// Another program on the same file: until its standard input ends, it changes two columns of every
// row of MILL alike and replaces one row, all in one transaction.
#include <poll.h>
#include <sqlite3.h>
#include <unistd.h>

int main(int, char** arguments) {
  sqlite3* database = nullptr;
  if (sqlite3_open(arguments[1], &database) != SQLITE_OK) return 1;
  sqlite3_busy_timeout(database, 10000);
  int rounds = 0;
  for (pollfd input{STDIN_FILENO, POLLIN, 0}; poll(&input, 1, 1) == 0; ++rounds) {
    const char* sql =
        "BEGIN IMMEDIATE; UPDATE MILL SET Diameter = Diameter + 1, Length = Length + 1;"
        "DELETE FROM MILL WHERE Name = 'visitor';"
        "INSERT INTO MILL (Name, Diameter, Length) VALUES ('visitor', 0, 0); COMMIT";
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) return 2;
  }
  sqlite3_close(database);
  return rounds > 0 ? 0 : 3;
}
