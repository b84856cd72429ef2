#pragma once
// Installs, once in the process, the buffered layer's live-column factory
// and the lookup face of the cursor's automatic lookups. Every buffer calls
// it before it builds its columns.
void oxdmInstallBufferedSeams();
