#include "samples/Gallery.h"

#include "samples/gallery/Exhibits.h"
#include "samples/gallery/References.h"

namespace velt::samples {

std::string galleryDrawing() {
  DrawingBuilder drawing;
  const References references = addReferences(drawing);
  Exhibition gallery{drawing, drawing.model(), references, {.layer = "Exhibits"}};
  addPlainEntities(gallery);
  addFaces(gallery);
  addCurves(gallery);
  addNotes(gallery);
  addImages(gallery);
  addMesh(gallery);
  addUnderlay(gallery);
  addBody(gallery);
  addSite(gallery);
  addTable(gallery);
  // A picture of one dimension stands for those of all.
  addDimensions(gallery, "*D1");
  addModels(gallery);
  addHatches(gallery);
  addPolylines(gallery);
  drawing.model().attributeDefinition({.tag = "MATERIAL", .value = "Steel", .at = {180, 0}},
                                      "What it is made of", gallery.style);
  addViewport(gallery);
  addDrawnDimension(gallery);
  // Each is there a second time without a picture: a block without entities is none.
  drawing.block("*D3");
  addDimensions(gallery, "*D3");
  return drawing.bytes();
}

}  // namespace velt::samples
