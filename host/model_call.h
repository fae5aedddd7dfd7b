// The models of the program for everybody who asks by far call.

#pragma once

namespace zelhost {

// Registers the receiver of "zelhost.model" (see zelhost/script.h).
void offerModels();

}  // namespace zelhost
