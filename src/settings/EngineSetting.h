#pragma once

/// What the user has said about working without PowerPoint, in the settings store.
namespace tessarine
{

bool IsBuiltInEngineAgreed();

/// Raises as SaveSetting does.
void RememberBuiltInEngine();

}  // namespace tessarine
