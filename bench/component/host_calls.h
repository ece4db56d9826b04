// The calls of the host that a row orders, made directly and in the same order: a baseline.
#pragma once

#include "bench/component/project.h"

namespace bench {

// What a row of a known property without unit reads, through a definition that is kept.
class KnownRow {
  public:
    KnownRow();
    void read(IKelosObject* object) const;

  private:
    ComPtr<IKelosQColumnDef> definition_;
};

// What a row of a fixed value reads.
void read_language(IKelosDocument* document);

}  // namespace bench
