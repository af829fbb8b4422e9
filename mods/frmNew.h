#pragma once

// The dialog that registers a new mod.
class frmNew {};
