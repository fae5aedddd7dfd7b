#include "model_call.h"

#include <memory>
#include <string>

#include "hostapp.h"
#include "model/gml_writer.h"
#include "zbasic/zfarcall.h"
#include "zelhost/script.h"

namespace zelhost {

namespace {

ZelMemBuf modelText(const ZelInputData& question) {
    const auto* const application = dynamic_cast<HostApplication*>(SV::GetpApp());
    if (!application) return {};
    const std::shared_ptr<const Model> model =
        application->findModel(std::string(question.getText()));
    if (!model) return {};
    std::string text;
    writeGml(model->graph, [&text](std::string_view bytes) {
        text += bytes;
        return true;
    });
    return {text.data(), text.size()};
}

}  // namespace

void offerModels() { ZelFarCallFactory::Instance().registerReceiver(kZelhostModelCall, modelText); }

}  // namespace zelhost
