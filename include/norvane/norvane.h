#pragma once

// Everything that a host usually needs; each of these headers also stands alone.

#include <norvane/model/NVMEnvelopeDefinition.h>
#include <norvane/model/NVMEnvelopeTemplateDefinition.h>
#include <norvane/platform/Platform.h>
#include <norvane/sdk/Configuration.h>
#include <norvane/sdk/Errors.h>
#include <norvane/sdk/NVMCredentials.h>
#include <norvane/sdk/NVMEnvelopesManager.h>
#include <norvane/sdk/NVMManager.h>
#include <norvane/signing/NVMNativeSigningViewController.h>
#include <norvane/signing/OfflineEnvelope.h>
#include <norvane/signing/SignedPreview.h>
#include <norvane/templates/NVMTemplatesManager.h>
