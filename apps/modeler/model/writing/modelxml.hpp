#pragma once
/// \file
/// Process models as XML, for other programs.
///
///     <?xml version="1.0" encoding="UTF-8"?>
///     <process name="Handling of an order">
///       <activity id="check" text="Check the order" duration="20"/>
///       <flow from="received" to="check"/>
///       <flow from="complete" to="ask" text="no"/>
///     </process>

#include "model/processmodel.hpp"

#include <iosfwd>

namespace modeler {

/// Writes a model; nodes and flows in their order, texts and durations where there are any. The stream says whether it could.
void writeXml(ProcessModel const & model, std::ostream & out);

/// The same to a file, which is replaced.
/// \return false for a file that cannot be written, which may then be cut off
bool writeXmlFile(SV::String const & fileName, ProcessModel const & model);

} // namespace modeler
