// The functions that ask the system: files, folders, processes, windows, names, the clipboard.
//
// What looks for a thing and does not find it gives the value of the user's variable "Missing",
// asked for as a call of its own. Each call looks anew; nothing is kept.
#pragma once

#include "job/JobVariable.h"

namespace JobLayer {

// IsMissing:text tells whether the text is the value of "Missing".
class JobVariableIsMissing : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Path:word gives a folder, name or path of the system; the words stand in one table in the
// source. Another word is reported and gives state Unknown.
class JobVariablePath : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// The functions on a path whose parts may be patterns: the first match of each part counts.

// IsFile:path and IsFolder:path
class JobVariableIsFile : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};
class JobVariableIsFolder : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// File:path and Folder:path give the path of what was found.
class JobVariableFile : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};
class JobVariableFolder : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// FileCount:path and FolderCount:path count all matches of the last part.
class JobVariableFileCount : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};
class JobVariableFolderCount : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// IsProcess:pattern and Process:pattern, on the module names of the running processes in any
// case; Process gives the name of the first match.
class JobVariableIsProcess : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};
class JobVariableProcess : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// IsWindow:text:class and Window:text:class, on the top-level windows in exact case; the class
// pattern may be left out. Window gives the handle of the first match in decimal.
class JobVariableIsWindow : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};
class JobVariableWindow : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Clipboard gives its text, at most ClipboardLimit units of 16 bits; EncodingUtf8.
class JobVariableClipboard : public JobVariableUnit {
 public:
  static constexpr int32_t ClipboardLimit = 65535;
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

} // namespace JobLayer
