#include "geometryAlgo/VedaType/LABPolyline.h"

namespace tarnalgo {

void TLABPolylineList::CollinearSmooth(double Eps) {
  for (TLABPolyline* Chain : *this) Chain->CollinearSmooth(Eps);
}

void TLABPolylineList::WriteToFile(const std::string& FileName, std::string_view Colour) const {
  std::string Text;
  for (const TLABPolyline* Chain : *this) Text += Chain->ToString(Colour);
  WriteDebugFile("TLABPolylineList.WriteToFile", FileName, Text);
}

}  // namespace tarnalgo
