#pragma once

namespace afx_subset
{

// Ends OLE for the calling thread if AfxOleInit has begun it.
void OleTerm();

} // namespace afx_subset
