#pragma once

/// Terms of the shop. Every object of the component has one; no method asks it anything yet.
class CGlossary {};
