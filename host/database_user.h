// The user that the program would log in to its database as.

#pragma once

#include "model/message.h"

namespace zelhost {

struct DatabaseUser {
    bool isKnown = false;
    Message text;  // the user and the file that says so, or why there is none
};

DatabaseUser databaseUser();

}  // namespace zelhost
