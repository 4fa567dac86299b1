#include "geometry/ozPickIndex.h"
#include "oz/ozGeoSet.h"

void ozGeoSet::setPickIndexEnable(unsigned char on) {
  _pickIndexEnable = on;
  if (!on) deletePickIndex();
}

void ozGeoSet::deletePickIndex() {
  delete _pickIndex;
  _pickIndex = nullptr;
}

void ozGeoSet::followPicks(VecReader const &coords, ozIntArray const *lengths) {
  if (!_pickIndex) _pickIndex = new ozPickIndex;
  _pickIndex->follow({coords.data, coords.index, coords.stride, coords.vecCount, coords.count,
                      static_cast<unsigned int>(_primCount), lengths ? lengths->getCount() : 0, _triEdits,
                      _coordIndexSet ? _coordIndexSet->_edits : 0});
}
