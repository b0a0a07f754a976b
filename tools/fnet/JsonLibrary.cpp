// Boost.JSON compiled into the tool (header-only mode), so that fnet needs no Boost library at
// run time.
#include <boost/json/src.hpp>
