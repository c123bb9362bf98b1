#pragma once

namespace zelvane {

/// Everyone may read it here: it keeps the file from being taken for something else, and no more.
inline constexpr char kDataPassword[] = "brindle48205";

/// Begins to open the data file on a thread of its own, for `OpenDataFile` to take: hashing the password
/// takes about as long as the toolkit takes to start. Needs nothing of the toolkit.
void OpenDataFileAhead();

/// Opens the data file as `State.DataConnection`, repaired where it's damaged. False where that can't be,
/// which has been told. It lies beside the program, else in the user's own data folder, which is made from
/// the template that comes with the program.
bool OpenDataFile();

/// Closes the data file and writes it anew without its free space, where it can be.
void CloseDataFile();

}  // namespace zelvane
