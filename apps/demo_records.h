#pragma once
// Walks the sample records in dataDir (generating them when missing) and
// shows a save meeting another program's change. False after a message.
bool ShowRecords(const char* dataDir);
