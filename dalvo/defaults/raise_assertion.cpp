#include "dalvo/utils/exception.h"

#ifdef DALVO_ABORT_ON_EXCEPTION
#include <cstdlib>
#include <iostream>
#endif

namespace dalvo {

/// Stops a debugger at the throw in builds that ask for it; otherwise does nothing.
// NOLINTNEXTLINE(readability-make-member-function-const): a host's own may change what it likes
void Exception::dump_msg_and_raise_assertion()
{
#ifdef DALVO_ABORT_ON_EXCEPTION
    std::cerr << message_stream.str() << std::endl;
    std::abort();
#endif
}

} // namespace dalvo
