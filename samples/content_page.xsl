<?xml version="1.0" encoding="UTF-8"?>
<!--
  A content document as a page: a table for every sheet, a line for every cell. For the platform's
  parser, as it is:  Page = ContentDocument.transformNode(StyleSheet)
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8"/>

  <!-- What stands before the first "!" of a pointer is the sheet. -->
  <xsl:key name="by-sheet" match="Content" use="substring-before(Document/Pointer/@Data, '!')"/>

  <xsl:template match="/">
    <html>
      <head>
        <title>Content document</title>
        <style>
          body { font-family: sans-serif; margin: 1.5em; }
          table { border-collapse: collapse; margin-bottom: 2em; }
          caption { text-align: left; font-weight: bold; padding: .3em 0; }
          th, td { border: 1px solid #bbb; padding: .2em .5em; text-align: left; vertical-align: top; }
          th { background: #eee; }
        </style>
      </head>
      <body>
        <xsl:for-each select="Contents/Content[generate-id() = generate-id(key('by-sheet',
            substring-before(Document/Pointer/@Data, '!'))[1])]">
          <xsl:call-template name="sheet">
            <xsl:with-param name="name" select="substring-before(Document/Pointer/@Data, '!')"/>
          </xsl:call-template>
        </xsl:for-each>
      </body>
    </html>
  </xsl:template>

  <xsl:template name="sheet">
    <xsl:param name="name"/>
    <table>
      <caption><xsl:value-of select="$name"/></caption>
      <tr>
        <th>Cell</th><th>Value</th><th>Unit</th><th>Direction</th><th>Object</th><th>Property</th>
      </tr>
      <xsl:apply-templates select="key('by-sheet', $name)"/>
    </table>
  </xsl:template>

  <xsl:template match="Content">
    <tr>
      <td><xsl:value-of select="substring-after(Document/Pointer/@Data, '!')"/></td>
      <td><xsl:call-template name="value"/></td>
      <td><xsl:value-of select="Property/PhysUnit/@Data"/></td>
      <td><xsl:value-of select="Value/IOMode/@Data"/></td>
      <td><xsl:value-of select="KelosObject/PathFullName/@Data"/></td>
      <td>
        <xsl:value-of select="Property/GetName/@Data"/>
        <xsl:if test="Property/GetParameter/@Data != ''">(<xsl:value-of
          select="Property/GetParameter/@Data"/>)</xsl:if>
      </td>
    </tr>
  </xsl:template>

  <!-- Of a value list the first item is the current one; expressions and fixed values have none. -->
  <xsl:template name="value">
    <xsl:choose>
      <xsl:when test="ValueItems/ValueItem">
        <xsl:value-of select="ValueItems/ValueItem[1]/DisplayValue/@Data"/>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="Value/KelosValue/@Data"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>
</xsl:stylesheet>
