#include "repository/documents/common/KeyRefusal.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/Values.h"

namespace Repository::Documents {

std::string explainNoKey(std::string_view component)
{
    const NumberedComponent numbered = splitNumber(component);
    return Reason::tr("%1 is not how a key is written in a path; write %2",
                      {quoted(component), quoted(joinNumber(encodeKey(numbered.name), numbered.number))});
}

} // namespace Repository::Documents
