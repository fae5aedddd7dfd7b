// The user that the program would log in to its database as.

#pragma once

namespace zelhost {

// Prints the user and the file that says so. False when there is no such file or it is worthless.
bool showDatabaseUser();

}  // namespace zelhost
