-- A page of the site from a document: links to documents become links to pages, links to other files of the project
-- their names alone, and names of classes and functions in code links into the reference. The metadata "reference" is a
-- list of NAME=FILE.

local reference = {}

local function read_reference(meta)
  for _, entry in ipairs(meta.reference or {}) do
    local name, file = pandoc.utils.stringify(entry):match("^(.-)=(.*)$")
    reference[name] = file
  end
  meta.reference = nil
  return meta
end

local function link(element)
  element = element:walk({Code = function(code) code.classes:insert("linked"); return code end})
  local target = element.target
  if target:match("^%a+:") or target:match("^#") then
    return element
  end
  local path, anchor = target:match("^([^#]*)(.*)$")
  local page = path:match("^([%w_-]+)%.md$") or path:match("^%.%./(%u+)%.md$") or path:match("^docs/([%w_-]+)%.md$")
  if page then
    if pandoc.utils.stringify(element) == path then
      element.content = {pandoc.Str((page:gsub("-", " ")))}
    end
    element.target = page .. ".html" .. anchor
    return element
  end
  return element.content  -- a file or folder of the project, which is no part of the site
end

local function code(element)
  if element.classes:includes("linked") then
    element.classes = {}
    return element
  end
  local file = reference[element.text]
  if file then
    return pandoc.Link({element}, "api/" .. file)
  end
end

return {{Meta = read_reference}, {Link = link}, {Code = code}}
